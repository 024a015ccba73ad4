#include "binary/LibraryImage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ImageBuilder.h"
#include "binary/ImportSearch.h"
#include "frame/Text.h"
#include "platform/Module.h"

namespace {

using namespace tarnexctl;
using namespace tooltest;
using testing::ElementsAre;
using testing::HasSubstr;

ImageParts SomeParts() {
    ImageParts parts;
    parts.imports = {{"one.dll", {"First", "Second"}}, {"libstdc++-6.dll", {"Third"}}};
    parts.exports = {"CreateFactory", "Other"};
    return parts;
}

std::size_t NamesIn(const LibraryImage& image) {
    std::size_t bytes = 0;
    for (const auto& name : image.exports) bytes += name.size() + 1;
    for (const auto& import : image.imports) {
        bytes += import.library.size() + 1;
        for (const auto& function : import.functions) bytes += function.size() + 1;
    }
    return bytes;
}

TEST(LibraryImage, PeGivesMachineImportsExportsAndSections) {
    const LibraryImage image = ReadLibraryImage(BuildPe(SomeParts()));
    EXPECT_EQ(image.format, ImageFormat::kPe);
    EXPECT_EQ(image.problem, "");
    EXPECT_EQ(image.machine, "x64");
    EXPECT_TRUE(image.isLibrary);
    EXPECT_THAT(image.exports, ElementsAre("CreateFactory", "Other"));
    EXPECT_TRUE(image.Exports("CreateFactory"));
    EXPECT_FALSE(image.Exports("createfactory"));
    ASSERT_EQ(image.imports.size(), 2u);
    EXPECT_EQ(image.imports[0].library, "one.dll");
    EXPECT_THAT(image.imports[0].functions, ElementsAre("First", "Second"));
    ASSERT_NE(image.FindSection(".owner"), nullptr);
    EXPECT_EQ(image.FindSection(".owner")->address, 0x1000u);
}

TEST(LibraryImage, SharedCppRuntimeIsToldFromTheImports) {
    EXPECT_EQ(SharedCppRuntime(ReadLibraryImage(BuildPe(SomeParts()))), "libstdc++-6.dll");
    ImageParts other;
    other.imports = {{"MSVCP140.dll", {}}};
    EXPECT_EQ(SharedCppRuntime(ReadLibraryImage(BuildPe(other))), "MSVCP140.dll");
    EXPECT_EQ(SharedCppRuntime(ReadLibraryImage(BuildPe({}))), "");
}

TEST(LibraryImage, OtherMachinesAndProgramsAreToldApart) {
    ImageParts parts = SomeParts();
    parts.machine = 0x14C;
    EXPECT_EQ(ReadLibraryImage(BuildPe(parts)).machine, "x86");
    parts.machine = 0xAA64;
    EXPECT_EQ(ReadLibraryImage(BuildPe(parts)).machine, "ARM64");
    parts.machine = 0x1234;
    EXPECT_EQ(ReadLibraryImage(BuildPe(parts)).machine, "0x1234");
    parts.isLibrary = false;
    EXPECT_FALSE(ReadLibraryImage(BuildPe(parts)).isLibrary);
}

TEST(LibraryImage, ElfGivesNeededLibrariesAndSearchFolders) {
    const LibraryImage image =
        ReadLibraryImage(BuildElf({"libone.so", "libtwo.so.2"}, "$ORIGIN:/opt/x"));
    EXPECT_EQ(image.format, ImageFormat::kElf);
    EXPECT_EQ(image.problem, "");
    EXPECT_EQ(image.machine, "x64");
    ASSERT_EQ(image.imports.size(), 2u);
    EXPECT_EQ(image.imports[1].library, "libtwo.so.2");
    EXPECT_THAT(image.searchFolders, ElementsAre("$ORIGIN", "/opt/x"));
}

TEST(LibraryImage, ThisProgramsOwnFileIsReadWhole) {
    std::string problem;
    const auto bytes = ReadWholeFile(ToPath(ToUtf8(platform::ExecutablePath())), problem);
    const LibraryImage image = ReadLibraryImage(bytes);
    EXPECT_EQ(image.problem, "");
    EXPECT_EQ(image.machine, "x64");
    EXPECT_THAT(SharedCppRuntime(image), HasSubstr("libstdc++"));
}

TEST(LibraryImage, EmptyAndOtherFilesAreNeither) {
    EXPECT_EQ(ReadLibraryImage({}).problem, "the file is empty");
    const std::vector<std::byte> text(100, std::byte{'x'});
    EXPECT_EQ(ReadLibraryImage(text).format, ImageFormat::kUnknown);
    EXPECT_NE(ReadLibraryImage(text).problem, "");
}

TEST(LibraryImage, TruncationAtEveryByteNeitherCrashesNorInventsNames) {
    const std::vector<std::byte> files[] = {BuildPe(SomeParts()),
                                            BuildElf({"libone.so"}, "$ORIGIN")};
    for (const auto& file : files) {
        const std::size_t whole = NamesIn(ReadLibraryImage(file));
        for (std::size_t size = 0; size < file.size(); ++size) {
            const LibraryImage image = ReadLibraryImage(std::span(file).first(size));
            EXPECT_LE(NamesIn(image), whole);
        }
        // A cut that takes a name away is told.
        EXPECT_NE(ReadLibraryImage(std::span(file).first(file.size() / 2)).problem, "");
    }
}

TEST(LibraryImage, EveryChangedByteIsSurvivedWithinTheFilesSize) {
    for (auto file : {BuildPe(SomeParts()), BuildElf({"libone.so", "libtwo.so"}, "$ORIGIN")}) {
        for (std::size_t i = 0; i < file.size(); ++i) {
            for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
                const std::byte before = file[i];
                file[i] = static_cast<std::byte>(value);
                EXPECT_LE(NamesIn(ReadLibraryImage(file)), file.size() * 4) << i;
                file[i] = before;
            }
        }
    }
}

TEST(LibraryImage, CountsThatTheFileCannotHoldAreADamage) {
    auto file = BuildPe(SomeParts());
    // The number of exported names.
    for (int i = 0; i < 4; ++i) file[0x200 + 24 + static_cast<std::size_t>(i)] = std::byte{0xFF};
    EXPECT_THAT(ReadLibraryImage(file).problem, HasSubstr("exports"));
}

}  // namespace
