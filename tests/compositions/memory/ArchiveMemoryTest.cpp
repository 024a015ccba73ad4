// What loading an archive asks the system for, whatever the counts in it say: no more than a fixed
// number of times the archive's size.

#include <gtest/gtest.h>

#include "compositions/ArchiveBody.h"
#include "compositions/ArchiveException.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "tarnex/AllocationFault.h"

namespace {

using namespace compositions;

constexpr std::size_t kHeaderBytes = 18;

// The costliest element is a node of 24 bytes that becomes one of 128, with its place on a stack
// that doubles; texts double where a character has 32 bits, and short ones have a least size.
constexpr std::size_t kMostMemoryPerByte = 16;
constexpr std::size_t kFixedMemory = 16 * 1024;

void PutCount(std::string& bytes, std::size_t at, std::uint64_t value) {
    for (std::size_t i = 0; i < 8; ++i) bytes[at + i] = static_cast<char>(value >> (8 * i) & 0xFF);
}

bool LoadsWithinMemory(std::string_view body, bool& whole) {
    CompositionDescription description;
    const std::size_t before = test_support::RequestedBytes();
    try {
        LoadArchiveBody(body, description);
        whole = true;
    } catch (const arch_exception&) {
        whole = false;
    }
    return test_support::RequestedBytes() - before <=
           body.size() * kMostMemoryPerByte + kFixedMemory;
}

TEST(ArchiveMemory, AbsurdCountsAndLengthsCostNoMoreThanTheFile) {
    const plain::File file = plain::Write(samples::Small());
    std::vector<std::size_t> fields = file.counts;
    fields.insert(fields.end(), file.lengths.begin(), file.lengths.end());
    ASSERT_GE(fields.size(), 50u);
    for (const std::size_t field : fields) {
        for (const std::uint64_t value :
             {std::uint64_t{1}, std::uint64_t{1} << 31, std::uint64_t{1} << 32,
              std::uint64_t{1} << 63, ~std::uint64_t{0}}) {
            std::string damaged = file.bytes;
            PutCount(damaged, field, value);
            bool whole;
            ASSERT_TRUE(LoadsWithinMemory(std::string_view(damaged).substr(kHeaderBytes), whole))
                << value << " at " << field;
        }
    }
}

TEST(ArchiveMemory, CountThatJustFitsTheBytesLeftCostsNoMoreThanTheFile) {
    // A megabyte of zeros behind each count in turn, which then promises as much as can be.
    const plain::File file = plain::Write(samples::Small());
    for (const std::size_t field : file.counts) {
        std::string damaged = file.bytes.substr(0, field + 8) + std::string(1'000'000, '\0');
        for (const std::uint64_t least : {8, 12, 16, 20, 24, 28, 32, 40}) {
            const std::uint64_t value = 1'000'000 / least;
            PutCount(damaged, field, value);
            bool whole;
            ASSERT_TRUE(LoadsWithinMemory(std::string_view(damaged).substr(kHeaderBytes), whole))
                << value << " at " << field;
        }
    }
}

TEST(ArchiveMemory, NodesThatEachPromiseAllTheRestCostNoMoreThanTheFile) {
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

}  // namespace
