#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <thread>

#include "Tool.h"
#include "frame/Text.h"
#include "platform/LibrarySearch.h"
#include "platform/Thread.h"

namespace {

using namespace tooltest;
using testing::Contains;

// A copy of the library, so that no other test's process has it loaded.
std::string OwnLibrary(const ScratchFolder& folder) {
    const std::string extension = platform::LibraryExtension();
    const std::string name = (extension == ".dll" ? "tarnex" : "libtarnex") + extension;
    const auto copy = folder.Path() / name;
    std::filesystem::copy_file(ProgramFolder() / name, copy);
    return tarnexctl::FromPath(copy);
}

// Asks until the answer is the wanted one: what a process held may be free only a moment later.
std::string WaitForState(const std::string& library, const std::string& wanted, Json& document) {
    std::string state;
    for (int attempt = 0; attempt < 60 && state != wanted; ++attempt) {
        const ToolRun run = RunTool({"doctor", "--json", "--library", library});
        document = Json::parse(run.out, nullptr, false);
        if (!document.is_object()) return "no document";
        state = document["ownership"].value("state", "");
    }
    return state;
}

TEST(Doctor, ReportsSettingsFoldersLibraryAndVersions) {
    const ScratchFolder folder;
    const Json document = RunForJson({"doctor", "--library", OwnLibrary(folder)}, 0);
    EXPECT_EQ(document["ownership"]["state"], "free");
    EXPECT_FALSE(document["settings"]["store"].get<std::string>().empty());
    EXPECT_EQ(document["settings"]["values"].size(), 6u);
    EXPECT_EQ(document["settings"]["values"][0]["name"], "Enabled");
    EXPECT_GT(document["folders"].size(), 0u);
    EXPECT_TRUE(document["version"].contains("program"));
}

TEST(Doctor, LibraryThatIsNotThereIsNotFoundAndOneThatIsNoneIsAFinding) {
    EXPECT_EQ(RunTool({"doctor", "--library", "no such library"}).code, 3);
    const ScratchFolder folder;
    const Json document = RunForJson({"doctor", "--library", folder.Write("x.dll", "text")}, 1);
    EXPECT_THAT(CodesOf(document["findings"]), Contains("D106"));
}

// A process that has the library loaded from its construction to Release or its own end.
class Holder {
public:
    Holder(const std::string& library, const std::filesystem::path& file) : file_(file) {
        run_ = std::thread([library, file] {
            (void)RunTool({"ownership-child", "--hold", tarnexctl::FromPath(file), library});
        });
        for (int i = 0; i < 6000 && !std::filesystem::exists(file_); ++i) platform::SleepMs(10);
        EXPECT_TRUE(std::filesystem::exists(file_)) << "it never came up";
    }
    ~Holder() { Release(); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    void Release() {
        std::error_code ignored;
        std::filesystem::remove(file_, ignored);
        if (run_.joinable()) run_.join();
    }

private:
    const std::filesystem::path file_;
    std::thread run_;
};

TEST(Doctor, OwnershipIsTakenThenStuckThenFree) {
    const ScratchFolder folder;
    const std::string library = OwnLibrary(folder);
    Json document;
    Holder owner(library, folder.Path() / "owner");
    EXPECT_EQ(WaitForState(library, "taken", document), "taken");
    EXPECT_THAT(CodesOf(document["findings"]), Contains("D104"));
    Holder refused(library, folder.Path() / "refused");
    owner.Release();
    const std::string stuck = "taken by a process that was itself refused";
    EXPECT_EQ(WaitForState(library, stuck, document), stuck);
    EXPECT_THAT(CodesOf(document["findings"]), Contains("D105"));
    ASSERT_EQ(document["ownership"]["holders"].size(), 1u);
    EXPECT_EQ(document["ownership"]["holders"][0]["owner"], false);
    refused.Release();
    EXPECT_EQ(WaitForState(library, "free", document), "free");
}

TEST(Doctor, SettingsFileIsWhereItSaysWhenThereIsNoRegistry) {
    if (std::string(platform::LibraryExtension()) == ".dll") GTEST_SKIP() << "there is a registry";
    const ScratchFolder folder;
    const std::string library = OwnLibrary(folder);
    const std::string settings = folder.Write(
        "settings.ini", "[Software\\Tesmar\\Commons\\Log]\nEnabled=dword:1\nLevel=dword:4\n");
    const Json document =
        RunForJson({"doctor", "--library", library}, 1, {{"TARNEX_SETTINGS", settings}});
    EXPECT_EQ(document["settings"]["store"], settings);
    EXPECT_EQ(document["tracing"]["on"], true);
    EXPECT_THAT(CodesOf(document["findings"]), Contains("D102"));
}

}  // namespace
