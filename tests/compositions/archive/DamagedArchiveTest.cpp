// Archives that are cut, changed or made up to do harm. What a damaged file must read as is decided
// by the plain implementation, byte for byte.

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <new>

#include "compositions/ArchiveBody.h"
#include "compositions/ArchiveException.h"
#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"
#include "compositions/reader/SmallStack.h"

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

// Every number of bytes that an operation asked for, added up; what it freed is not subtracted.
std::size_t requestedBytes = 0;

}  // namespace

void* operator new(std::size_t size) {
    requestedBytes += size;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

// The costliest element is a node of 24 bytes that becomes one of 72, with its place on a stack
// that doubles; texts double where a character has 32 bits, and short ones have a least size.
constexpr std::size_t kMostMemoryPerByte = 16;
constexpr std::size_t kFixedMemory = 16 * 1024;

bool LoadsWithinMemory(std::string_view body, bool& whole) {
    CompositionDescription description;
    const std::size_t before = requestedBytes;
    try {
        LoadArchiveBody(body, description);
        whole = true;
    } catch (const arch_exception&) {
        whole = false;
    }
    return requestedBytes - before <= body.size() * kMostMemoryPerByte + kFixedMemory;
}

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
        ASSERT_NO_FATAL_FAILURE(ExpectPlainReading(folder / "a.mxf", damaged)) << "bit " << bit;
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
            bool whole;
            ASSERT_TRUE(LoadsWithinMemory(std::string_view(damaged).substr(kHeaderBytes), whole))
                << value << " at " << field;
        }
    }
}

TEST(DamagedArchive, CountThatJustFitsTheBytesLeftCostsNoMoreThanTheFile) {
    // A megabyte of zeros behind each count in turn, which then promises as much as can be.
    const plain::File file = plain::Write(samples::Small());
    for (const std::size_t field : file.counts) {
        std::string damaged = file.bytes.substr(0, field + 8) + std::string(1'000'000, '\0');
        for (const std::uint64_t least : {8, 12, 16, 20, 24, 28, 32, 40}) {
            const std::uint64_t value = 1'000'000 / least;
            for (std::size_t i = 0; i < 8; ++i) {
                damaged[field + i] = static_cast<char>(value >> (8 * i) & 0xFF);
            }
            bool whole;
            ASSERT_TRUE(LoadsWithinMemory(std::string_view(damaged).substr(kHeaderBytes), whole))
                << value << " at " << field;
        }
    }
}

TEST(DamagedArchive, NodesThatEachPromiseAllTheRestCostNoMoreThanTheFile) {
    // Each node says that as many children follow as the bytes behind it could hold: room made for
    // them at every level would grow with the square of the file.
    constexpr std::size_t kNodes = 20'000;
    std::string body(8 * 9, '\0');
    for (std::size_t i = 0; i < kNodes; ++i) {
        std::uint64_t count = kNodes - i - 1;
        body.append(8, '\0');
        for (int byte = 0; byte < 8; ++byte, count >>= 8) body += static_cast<char>(count & 0xFF);
        if (i + 1 == kNodes) body.append(8 * kNodes, '\0');
    }
    bool whole = true;
    EXPECT_TRUE(LoadsWithinMemory(body, whole));
    EXPECT_FALSE(whole);
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
