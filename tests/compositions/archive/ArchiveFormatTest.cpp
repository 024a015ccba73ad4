// The published description of the bytes against the library: the worked example is read from the
// document itself.

#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>

#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"

namespace {

using namespace compositions;

struct Example {
    std::string bytes;
    bool offsetsAgree = true;  // each line's offset is that of its first byte
};

Example ReadExample() {
    std::istringstream document(
        ReadBytes(std::filesystem::path(TARNEX_SOURCE_DIR) / "docs" / "archive_format.md"));
    Example example;
    bool inside = false;
    for (std::string line; std::getline(document, line);) {
        if (line.starts_with("```")) {
            inside = line == "```hex";
        } else if (inside) {
            std::istringstream hex(line.substr(0, line.find(';')));
            std::string offset;
            hex >> offset;
            if (std::stoul(offset, nullptr, 16) != example.bytes.size()) {
                example.offsetsAgree = false;
            }
            for (unsigned byte; hex >> std::hex >> byte;) {
                example.bytes += static_cast<char>(static_cast<unsigned char>(byte));
            }
        }
    }
    return example;
}

TEST(ArchiveFormat, DocumentedExampleLoadsAsDocumented) {
    const Example example = ReadExample();
    ASSERT_GT(example.bytes.size(), 500u);
    EXPECT_TRUE(example.offsetsAgree);
    TempFolder folder;
    WriteBytes(folder / "example.mxf", example.bytes);
    ScriptArchive archive(folder.Wide("example.mxf"), true);
    CompositionDescription description;
    EXPECT_EQ(archive.Version(), 2);
    ASSERT_TRUE(archive.serialize(description));
    EXPECT_TRUE(plain::Of(description) == plain::Of(samples::Documented()));
}

TEST(ArchiveFormat, SavingTheDocumentedDescriptionGivesTheDocumentedBytes) {
    TempFolder folder;
    ScriptArchive archive(folder.Wide("example.mxf"), false);
    ASSERT_TRUE(archive.serialize(samples::Documented()));
    ASSERT_TRUE(archive.Close());
    EXPECT_EQ(ReadBytes(folder / "example.mxf"), ReadExample().bytes);
}

TEST(ArchiveFormat, DocumentedExampleEndsWithItsLastField) {
    const std::string bytes = ReadExample().bytes;
    EXPECT_TRUE(plain::Read(bytes).whole);
    EXPECT_FALSE(plain::Read(bytes.substr(0, bytes.size() - 1)).whole);
}

}  // namespace
