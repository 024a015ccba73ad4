// Archives that are cut, changed or made up to do harm. What a damaged file must read as is decided
// by the plain implementation, byte for byte.

#include <gtest/gtest.h>

#include <limits>

#include "compositions/ArchiveBody.h"
#include "compositions/ArchiveException.h"
#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"
#include "support/SmallStack.h"

namespace {

using namespace compositions;

constexpr std::size_t kHeaderBytes = 18;

// Loads the file and compares everything that can be seen with the plain reading of it.
void ExpectPlainReading(const std::filesystem::path& path, const std::string& bytes) {
    WriteBytes(path, bytes);
    const plain::Reading expected = plain::Read(bytes);
    ScriptArchive archive(TempFolder::WidePath(path), true);
    ASSERT_EQ(archive.Version(), expected.version);
    CompositionDescription description;
    ASSERT_EQ(archive.serialize(description), expected.whole);
    if (expected.whole) {
        ASSERT_TRUE(plain::Of(description) == expected.description);
    }
}

// The same in memory, for a file whose header is whole.
void ExpectPlainReadingOfBody(const std::string& bytes) {
    const plain::Reading expected = plain::Read(bytes);
    CompositionDescription description;
    bool whole = true;
    try {
        LoadArchiveBody(std::string_view(bytes).substr(kHeaderBytes), description);
    } catch (const arch_exception&) {
        whole = false;
    }
    ASSERT_EQ(whole, expected.whole);
    if (whole) {
        ASSERT_TRUE(plain::Of(description) == expected.description);
    }
}

// Between the bits that are tried in files; all of them are tried in memory.
constexpr std::size_t kBitsApart = 7;

TEST(DamagedArchive, CutAtEveryByteFails) {
    TempFolder folder;
    const std::string bytes = plain::Write(samples::Small()).bytes;
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        ASSERT_FALSE(plain::Read(bytes.substr(0, size)).whole);
        ASSERT_NO_FATAL_FAILURE(ExpectPlainReading(folder / "a.mxf", bytes.substr(0, size)))
            << size << " bytes";
    }
}

TEST(DamagedArchive, EveryFlippedBitReadsAsThePlainReaderSays) {
    TempFolder folder;
    const std::string bytes = plain::Write(samples::Small()).bytes;
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        std::string damaged = bytes;
        damaged[bit / 8] ^= static_cast<char>(1 << bit % 8);
        if (bit < kHeaderBytes * 8 || bit % kBitsApart == 0) {
            ASSERT_NO_FATAL_FAILURE(ExpectPlainReading(folder / "a.mxf", damaged)) << "bit " << bit;
        }
        if (bit >= kHeaderBytes * 8) {
            ASSERT_NO_FATAL_FAILURE(ExpectPlainReadingOfBody(damaged)) << "bit " << bit;
        }
    }
}

TEST(DamagedArchive, EveryCountAndLengthMayBeAbsurd) {
    TempFolder folder;
    const plain::File file = plain::Write(samples::Small());
    std::vector<std::size_t> fields = file.counts;
    fields.insert(fields.end(), file.lengths.begin(), file.lengths.end());
    ASSERT_GE(fields.size(), 50u);
    constexpr std::uint64_t kValues[] = {0,
                                         1,
                                         2,
                                         std::uint64_t{1} << 31,
                                         std::uint64_t{1} << 32,
                                         std::uint64_t{1} << 63,
                                         std::numeric_limits<std::uint64_t>::max()};
    for (const std::size_t field : fields) {
        for (const std::uint64_t value : kValues) {
            std::string damaged = file.bytes;
            for (std::size_t i = 0; i < 8; ++i) {
                damaged[field + i] = static_cast<char>(value >> (8 * i) & 0xFF);
            }
            ASSERT_NO_FATAL_FAILURE(ExpectPlainReading(folder / "a.mxf", damaged))
                << value << " at " << field;
        }
    }
}

TEST(DamagedArchive, MillionNestedNodesNeedNoStack) {
    RunOnSmallStack([] {
        TempFolder folder;
        CompositionDescription description;
        description.structure = samples::Chain(1'000'000);
        ScriptArchive saving(folder.Wide("a.mxf"), false);
        ASSERT_TRUE(saving.serialize(description));
        ASSERT_TRUE(saving.Close());
        EXPECT_EQ(std::filesystem::file_size(folder / "a.mxf"),
                  kHeaderBytes + 8 * (9 + 2 + 2) + 1'000'000 * 24 + 2 + 6);
        ScriptArchive loading(folder.Wide("a.mxf"), true);
        CompositionDescription loaded;
        EXPECT_TRUE(loading.serialize(loaded));
        EXPECT_TRUE(loaded.structure == description.structure);
    });
}

TEST(DamagedArchive, MillionNestedNodesThatEndEarlyFail) {
    RunOnSmallStack([] {
        CompositionDescription description;
        description.structure = samples::Chain(1'000'000);
        std::string body;
        SaveArchiveBody(description, body);
        body.resize(body.size() / 2);
        CompositionDescription loaded;
        EXPECT_THROW(LoadArchiveBody(body, loaded), arch_exception);
    });
}

}  // namespace
