// Taking archives apart: whatever is wrong with one, the place is named.

#include "archives/ArchiveReading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "compositions/Files.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"

namespace {

using namespace tooltest;
using tarnexctl::ReadArchive;
using testing::HasSubstr;

bool IsCount(const plain::File& file, std::uint64_t offset) {
    return std::ranges::count(file.counts, offset) + std::ranges::count(file.lengths, offset) > 0;
}

TEST(ArchiveReading, AWholeArchiveHasNoDamageAndEveryFieldItsOffset) {
    const plain::File file = plain::Write(samples::Documented());
    const auto reading = ReadArchive(file.bytes);
    EXPECT_FALSE(reading.damage);
    EXPECT_EQ(reading.version, 2);
    EXPECT_TRUE(reading.description == samples::Documented());
    EXPECT_EQ(reading.end, file.bytes.size());
    // As the worked example of docs/archive_format.md has them.
    const std::vector<std::uint64_t> expected = {0x12,  0x26,  0x50,  0x68,  0x9e,  0xe0,
                                                 0x10a, 0x178, 0x1b0, 0x1ea, 0x268, 0x282,
                                                 0x296, 0x2b2, 0x2f2, 0x2f3, 0x2f7};
    EXPECT_EQ(reading.fieldOffsets, expected);
}

TEST(ArchiveReading, EachTruncationIsNamedByTheEndOrByTheCountThatPromisesMore) {
    const plain::File file = plain::Write(samples::Small());
    for (std::size_t size = 0; size < file.bytes.size(); ++size) {
        const auto reading = ReadArchive(std::string_view(file.bytes).substr(0, size));
        ASSERT_TRUE(reading.damage) << size;
        const std::uint64_t offset = reading.damage->offset;
        if (offset != size) {
            EXPECT_TRUE(IsCount(file, offset)) << offset << " of " << size;
            EXPECT_LE(offset + 8, size);
            EXPECT_THAT(reading.damage->reason, HasSubstr("a count of ")) << size;
        } else {
            EXPECT_THAT(reading.damage->reason, HasSubstr("the file ends")) << size;
        }
    }
}

TEST(ArchiveReading, EachAbsurdCountIsNamedByItsOffset) {
    const plain::File file = plain::Write(samples::Small());
    std::vector<std::size_t> all = file.counts;
    all.insert(all.end(), file.lengths.begin(), file.lengths.end());
    for (const std::size_t offset : all) {
        std::string bytes = file.bytes;
        bytes[offset + 7] = '\x7F';
        const auto reading = ReadArchive(bytes);
        ASSERT_TRUE(reading.damage) << offset;
        EXPECT_EQ(reading.damage->offset, offset);
    }
}

TEST(ArchiveReading, TheFirstWrongByteOfTheSignatureAndTheVersionAreNamed) {
    const std::string whole = ArchiveBytesOf(samples::Small());
    for (std::size_t i = 0; i < 14; ++i) {
        std::string bytes = whole;
        bytes[i] = '?';
        ASSERT_TRUE(ReadArchive(bytes).damage);
        EXPECT_EQ(ReadArchive(bytes).damage->offset, i);
    }
    std::string bytes = whole;
    bytes[14] = '\0';
    EXPECT_EQ(ReadArchive(bytes).damage->offset, 14u);
    EXPECT_EQ(ReadArchive(bytes).damage->reason, "there is no version 0");
    bytes[14] = '\7';
    EXPECT_FALSE(ReadArchive(bytes).damage);  // later versions have the same layout
}

TEST(ArchiveReading, DamageSaysInWhichField) {
    const std::string bytes = ArchiveBytesOf(samples::Documented());
    const auto cut = ReadArchive(std::string_view(bytes).substr(0, 0x10d));
    EXPECT_EQ(cut.damage->reason, "the file ends in the field \"envelopes\"");
    std::string absurd = bytes;
    absurd[0x1b5] = 1;
    EXPECT_EQ(ReadArchive(absurd).damage->reason,
              "a count of 1099511627777 in the field \"timeline events\" that the 320 bytes behind "
              "it cannot hold");
}

TEST(ArchiveReading, BytesBehindTheBodyDoNotBelongToIt) {
    const std::string bytes = ArchiveBytesOf(samples::Small());
    const auto reading = ReadArchive(bytes + "behind");
    EXPECT_FALSE(reading.damage);
    EXPECT_EQ(reading.end, bytes.size());
}

}  // namespace
