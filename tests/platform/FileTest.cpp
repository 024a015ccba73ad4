#include "platform/File.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include "platform/Module.h"
#include "platform/NativePath.h"
#include "platform/OutputFile.h"
#include "platform/SettingsStore.h"

namespace {

using test_platform::TempFolder;

std::wstring Wide(const std::filesystem::path& path) {
    return platform::WidePath(path.native());
}

void Put(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

TEST(InputFile, ReadsWhatIsThere) {
    const TempFolder folder;
    const auto path = folder.Path() / u8"gr\u00fcn file.txt";
    Put(path, std::string("ab\0c\r\n", 6));
    platform::InputFile file;
    ASSERT_TRUE(file.Open(Wide(path)));
    std::uint64_t size = 0;
    ASSERT_TRUE(file.Size(size));
    EXPECT_EQ(size, 6u);
    char bytes[16];
    EXPECT_EQ(file.Read(bytes, sizeof bytes), 6u);
    EXPECT_EQ(std::string(bytes, 6), std::string("ab\0c\r\n", 6));
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Read(bytes, sizeof bytes), 0u);
    EXPECT_FALSE(file.Size(size));
}

TEST(InputFile, MissingFileAndFolderDoNotOpen) {
    const TempFolder folder;
    platform::InputFile file;
    EXPECT_FALSE(file.Open(Wide(folder.Path() / "none")));
    EXPECT_FALSE(file.Open(Wide(folder.Path())));
    EXPECT_FALSE(file.Open(L""));
    EXPECT_FALSE(file.IsOpen());
}

// Where the system keeps files for those who opened them: on Windows.
TEST(InputFile, OthersMayReadAnOpenFileAndNotWriteIt) {
    const TempFolder folder;
    const auto path = folder.Path() / "a.txt";
    Put(path, "a");
    const bool keeps = std::filesystem::path::preferred_separator == L'\\';
    platform::InputFile file;
    ASSERT_TRUE(file.Open(Wide(path)));
    platform::InputFile other;
    EXPECT_TRUE(other.Open(Wide(path)));
    other.Close();
    EXPECT_EQ(std::ofstream(path, std::ios::app).is_open(), !keeps);
    file.Close();
    EXPECT_TRUE(std::ofstream(path, std::ios::app).is_open());
}

TEST(InputFile, BackslashSeparatesFolders) {
    const TempFolder folder;
    Put(folder.Path() / "a.txt", "a");
    platform::InputFile file;
    EXPECT_TRUE(file.Open(Wide(folder.Path()) + L"\\a.txt"));
}

TEST(LastWriteTime, FollowsTheFileIn100NanosecondUnits) {
    const TempFolder folder;
    const auto path = folder.Path() / "a.txt";
    std::uint64_t first = 7;
    EXPECT_FALSE(platform::LastWriteTime(Wide(path), first));
    EXPECT_EQ(first, 7u);
    Put(path, "a");
    // Whole seconds, which every file system keeps.
    const auto time =
        std::chrono::floor<std::chrono::seconds>(std::filesystem::last_write_time(path));
    std::filesystem::last_write_time(path, time);
    ASSERT_TRUE(platform::LastWriteTime(Wide(path), first));
    std::filesystem::last_write_time(path, time + std::chrono::seconds(10));
    std::uint64_t second = 0;
    ASSERT_TRUE(platform::LastWriteTime(Wide(path), second));
    EXPECT_EQ(second - first, 100'000'000u);
}

TEST(OutputFile, WritesAtPositionsAndEmptiesOnOpening) {
    const TempFolder folder;
    const auto path = folder.Path() / "a.txt";
    Put(path, "longer than what comes");
    platform::OutputFile file;
    ASSERT_TRUE(file.Open(Wide(path)));
    EXPECT_TRUE(file.WriteAt(0, "abc", 3));
    EXPECT_TRUE(file.WriteAt(3, "def", 3));
    EXPECT_TRUE(file.WriteAt(3, "def", 3));
    file.Close();
    EXPECT_EQ(std::filesystem::file_size(path), 6u);
}

TEST(OutputFile, AppendingMakesTheFileAndKeepsWhatIsThere) {
    const TempFolder folder;
    const auto path = folder.Path() / "a.txt";
    EXPECT_TRUE(platform::AppendToFile(Wide(path), "ab", 2));
    EXPECT_TRUE(platform::AppendToFile(Wide(path), "cd", 2));
    EXPECT_EQ(std::filesystem::file_size(path), 4u);
    EXPECT_FALSE(platform::AppendToFile(Wide(folder.Path()), "cd", 2));
}

TEST(Module, WhatIsNoLibraryIsNotLoaded) {
    const TempFolder folder;
    Put(folder.Path() / "no.dll", "not a library");
    EXPECT_EQ(platform::LoadModule(Wide(folder.Path() / "no.dll")), nullptr);
    EXPECT_EQ(platform::LoadModule(Wide(folder.Path() / "none.dll")), nullptr);
    EXPECT_EQ(platform::LoadModule(Wide(folder.Path()) + L"\\" + std::wstring(40'000, L'x')),
              nullptr);
    EXPECT_EQ(platform::LoadModule(L""), nullptr);
}

TEST(Module, ExecutablePathIsThisProgram) {
    EXPECT_NE(platform::ExecutablePath().find(L"platform_test"), std::wstring::npos);
}

}  // namespace
