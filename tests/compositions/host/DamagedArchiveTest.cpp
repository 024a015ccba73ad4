// Damaged archives handed to the built library by path. What each must give is decided by the plain
// implementation: the composition, or 12 and one line in the log.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "host/HostSession.h"

namespace host_test {
namespace {

class DamagedArchive : public HostTest {
protected:
    DamagedArchive() : host_(sandbox_, &log_) { host_.Start(""); }
    ~DamagedArchive() override {
        EXPECT_EQ(host_.Finish(), 0);
        const std::vector<std::string> lines = sandbox_.LogMessages();
        EXPECT_EQ(lines.size(), refused_);
        EXPECT_EQ(std::count(lines.begin(), lines.end(),
                             "Operation \"compositions::CompositionFactory::CreateFX\" returned "
                             "error <eCouldNotCreateFX>"),
                  static_cast<std::ptrdiff_t>(refused_));
    }

    void ExpectPlainReading(const std::string& bytes) {
        const std::filesystem::path path = sandbox_.Folder() / "damaged.mxf";
        std::filesystem::remove(path);  // some systems flush a file that is cut and rewritten
        std::ofstream(path, std::ios::binary) << bytes;
        const plain::Reading reading = plain::Read(bytes);
        const bool usable = reading.version >= 1 && reading.whole;
        const plain::Text id = reading.description.name + u"\\" + reading.description.category;
        if (!usable) ++refused_;
        ASSERT_EQ(host_.Do({"create_path", Utf8(path)}),
                  usable ? "0 set " + Utf8(std::wstring(id.begin(), id.end())) : "12 empty");
    }

    const plain::File file_ = plain::Write(samples::Small());
    std::size_t refused_ = 0;
    Host host_;
};

TEST_F(DamagedArchive, CutAtEveryByteIsRefused) {
    for (std::size_t size = 0; size < file_.bytes.size(); ++size) {
        ASSERT_NO_FATAL_FAILURE(ExpectPlainReading(file_.bytes.substr(0, size))) << size;
    }
    EXPECT_EQ(refused_, file_.bytes.size());
}

TEST_F(DamagedArchive, FlippedBitsGiveWhatTheBytesSay) {
    for (std::size_t bit = 0; bit < file_.bytes.size() * 8; bit += TARNEX_FLIPPED_BITS_APART) {
        std::string bytes = file_.bytes;
        bytes[bit / 8] ^= static_cast<char>(1 << bit % 8);
        ASSERT_NO_FATAL_FAILURE(ExpectPlainReading(bytes)) << "bit " << bit;
    }
    EXPECT_GT(refused_, 0u);
}

TEST_F(DamagedArchive, AbsurdCountsAndLengthsAreRefused) {
    std::vector<std::size_t> fields = file_.counts;
    fields.insert(fields.end(), file_.lengths.begin(), file_.lengths.end());
    for (const std::size_t field : fields) {
        for (const std::uint64_t value :
             {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{1} << 31, std::uint64_t{1} << 32,
              std::uint64_t{1} << 63, ~std::uint64_t{0}}) {
            std::string bytes = file_.bytes;
            for (std::size_t i = 0; i < 8; ++i) {
                bytes[field + i] = static_cast<char>(value >> (8 * i) & 0xFF);
            }
            ASSERT_NO_FATAL_FAILURE(ExpectPlainReading(bytes)) << value << " at " << field;
        }
    }
    EXPECT_GE(refused_, fields.size() * 4);
}

TEST_F(DamagedArchive, VersionsFromOneOnAreRead) {
    for (const std::int32_t version : {-1, 0, 1, 2, 3, 0x7FFFFFFF}) {
        ASSERT_NO_FATAL_FAILURE(ExpectPlainReading(plain::Write(samples::Small(), version).bytes));
    }
    EXPECT_EQ(refused_, 2u);
}

// Not damaged, but as odd as files may be.

class OddArchive : public DamagedArchive {
protected:
    std::string Create(const std::string& bytes) {
        const std::filesystem::path path = sandbox_.Folder() / "odd.mxf";
        std::filesystem::remove(path);
        std::ofstream(path, std::ios::binary) << bytes;
        return host_.Do({"create_path", Utf8(path)});
    }
};

TEST_F(OddArchive, BytesBehindTheDescriptionAreIgnored) {
    EXPECT_EQ(Create(file_.bytes + "anything"), "0 set N\\C");
}

TEST_F(OddArchive, WhatAScriptMayNotBeIsBelieved) {
    plain::Description description;  // a filter without an input, and without a name
    description.isFilter = true;
    EXPECT_EQ(Create(plain::Write(description).bytes), "0 set \\");
}

TEST_F(OddArchive, MillionNestedNodesAreRead) {
    constexpr std::size_t kLevels = 1'000'000;
    const std::string zero(8, '\0');
    const std::string one = '\1' + std::string(7, '\0');
    std::string bytes = file_.bytes.substr(0, 18) + std::string(9 * 8, '\0');
    for (std::size_t level = 1; level < kLevels; ++level) bytes += zero + one;
    bytes.append(8 * (kLevels + 2), '\0');  // the deepest one, then everybody's second list
    bytes += one + std::string("D\0", 2) + one + std::string("C\0", 2);
    bytes.append(8 + 8 + 1 + 4 + 1, '\0');
    EXPECT_EQ(Create(bytes), "0 set D\\C");
    bytes.resize(bytes.size() / 2);
    ++refused_;
    EXPECT_EQ(Create(bytes), "12 empty");
}

}  // namespace
}  // namespace host_test
