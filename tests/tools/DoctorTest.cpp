#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "Tool.h"
#include "frame/Text.h"
#include "platform/LibrarySearch.h"

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

// Asks until the answer is the wanted one; the holders say when they are there by being seen.
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

TEST(Doctor, OwnershipIsTakenThenStuckThenFree) {
    const ScratchFolder folder;
    const std::string library = OwnLibrary(folder);
    Json document;
    std::thread owner([&] { (void)RunTool({"ownership-child", "--hold", "6000", library}); });
    EXPECT_EQ(WaitForState(library, "taken", document), "taken");
    EXPECT_THAT(CodesOf(document["findings"]), Contains("D104"));
    std::thread refused([&] { (void)RunTool({"ownership-child", "--hold", "15000", library}); });
    owner.join();
    const std::string stuck = "taken by a process that was itself refused";
    EXPECT_EQ(WaitForState(library, stuck, document), stuck);
    EXPECT_THAT(CodesOf(document["findings"]), Contains("D105"));
    ASSERT_EQ(document["ownership"]["holders"].size(), 1u);
    EXPECT_EQ(document["ownership"]["holders"][0]["owner"], false);
    refused.join();
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
