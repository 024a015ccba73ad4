#include "compositions/ArchiveWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <thread>

#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"
#include "platform/FileMove.h"
#include "platform/Thread.h"

namespace {

using namespace compositions;

// No system hands this number out: it is odd, and beyond the largest that processes get.
constexpr std::uint32_t kNoProcess = 2'000'000'011;

std::string Temporary(std::uint32_t process) {
    return "~tarnex-" + std::to_string(process) + "-0123cdef.tmp";
}

std::set<std::string> Names(const TempFolder& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

TEST(ArchiveWriter, WritesTheWholeArchiveAndNothingElse) {
    TempFolder folder;
    ASSERT_TRUE(WriteArchive(folder.Wide("a.mxf"), samples::Everything()));
    EXPECT_EQ(ReadBytes(folder / "a.mxf"), plain::Write(samples::Everything()).bytes);
    EXPECT_EQ(Names(folder), std::set<std::string>{"a.mxf"});
}

TEST(ArchiveWriter, ReplacesTheOldArchive) {
    TempFolder folder;
    WriteBytes(folder / "a.mxf", std::string(100'000, 'x'));
    ASSERT_TRUE(WriteArchive(folder.Wide("a.mxf"), samples::Small()));
    EXPECT_EQ(ReadBytes(folder / "a.mxf"), plain::Write(samples::Small()).bytes);
}

TEST(ArchiveWriter, RemovesWhatAKilledProcessLeft) {
    TempFolder folder;
    WriteBytes(folder / Temporary(kNoProcess), "half an archi");
    ASSERT_TRUE(WriteArchive(folder.Wide("other.mxf"), samples::Small()));
    EXPECT_EQ(Names(folder), std::set<std::string>{"other.mxf"});
}

TEST(ArchiveWriter, RemovesWhatAnEarlierProcessOfItsNumberLeft) {
    TempFolder folder;
    WriteBytes(folder / Temporary(platform::CurrentProcessId()), std::string(5000, 'x'));
    ASSERT_TRUE(WriteArchive(folder.Wide("a.mxf"), samples::Small()));
    EXPECT_EQ(Names(folder), std::set<std::string>{"a.mxf"});
    EXPECT_EQ(ReadBytes(folder / "a.mxf"), plain::Write(samples::Small()).bytes);
}

TEST(ArchiveWriter, LeavesEverybodyElsesFilesAlone) {
    TempFolder folder;
    const std::string digits = std::to_string(kNoProcess);
    const std::set<std::string> others{"~tarnex-.tmp",
                                       "~tarnex--0123cdef.tmp",
                                       "~tarnex-" + digits,
                                       "~tarnex-" + digits + ".tmp",
                                       "~tarnex-" + digits + "-0123cde.tmp",
                                       "~tarnex-" + digits + "-0123cdef0.tmp",
                                       "~tarnex-" + digits + "-0123cdeg.tmp",
                                       "~tarnex-" + digits + "-0123cdef.tmp.bak",
                                       "~tarnex-0" + digits + "-0123cdef.tmp",
                                       "~tarnex-99999999999999999999-0123cdef.tmp",
                                       "~tarnex-12a-0123cdef.tmp",
                                       "x~tarnex-" + digits + "-0123cdef.tmp"};
    for (const std::string& name : others) WriteBytes(folder / name, "mine");
    ASSERT_TRUE(WriteArchive(folder.Wide("a.mxf"), samples::Small()));
    std::set<std::string> expected = others;
    expected.insert("a.mxf");
    EXPECT_EQ(Names(folder), expected);
}

TEST(ArchiveWriter, FolderThatIsNotThereFails) {
    TempFolder folder;
    EXPECT_FALSE(WriteArchive(folder.Wide("none/a.mxf"), samples::Small()));
    EXPECT_TRUE(Names(folder).empty());
}

TEST(ArchiveWriter, FolderOfTheArchivesNameFailsAndLeavesNothing) {
    TempFolder folder;
    std::filesystem::create_directory(folder / "a.mxf");
    EXPECT_FALSE(WriteArchive(folder.Wide("a.mxf"), samples::Small()));
    EXPECT_EQ(Names(folder), std::set<std::string>{"a.mxf"});
}

TEST(ArchiveWriter, ReadersSeeTheOldArchiveOrTheNewOneWhole) {
    TempFolder folder;
    CompositionDescription small = samples::Small();
    CompositionDescription large = samples::Everything();
    large.properties.resize(5000, large.properties.front());
    const std::string first = plain::Write(small).bytes;
    const std::string second = plain::Write(large).bytes;
    ASSERT_TRUE(WriteArchive(folder.Wide("a.mxf"), small));
    std::thread writer([&] {
        for (int i = 0; i < 20; ++i) {
            WriteArchive(folder.Wide("a.mxf"), i % 2 == 0 ? large : small);
        }
    });
    for (int i = 0; i < 200; ++i) {
        const std::string seen = ReadBytes(folder / "a.mxf");
        // Empty: where a file cannot be opened while it is replaced.
        ASSERT_TRUE(seen == first || seen == second || seen.empty()) << seen.size();
    }
    writer.join();
    EXPECT_EQ(Names(folder), std::set<std::string>{"a.mxf"});
}

TEST(ArchiveWriter, WritesPathsLongerThanTheSystemsOldLimit) {
    TempFolder folder;
    std::wstring path = folder.Wide("");
    for (int level = 0; level < 3; ++level) {
        path += std::wstring(level == 0 ? L"" : L"\\") + std::wstring(100, L'd');
        std::filesystem::create_directory(platform::StreamPath(path));
    }
    path += L"\\a.mxf";
    ASSERT_TRUE(WriteArchive(path, samples::Small()));
    EXPECT_TRUE(platform::IsPlainFile(path));
    EXPECT_TRUE(platform::RemoveFile(path));
}

}  // namespace
