#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tool.h"
#include "frame/Text.h"
#include "platform/LibrarySearch.h"

namespace {

using namespace tooltest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

std::string Plugins() {
    return tarnexctl::FromPath(ProgramFolder() / "plugins");
}
std::string Compositions() {
    return std::string(TARNEX_EXAMPLES) + "/compositions";
}

// Puts libraries into a folder under the names that a folder scan takes up.
void Install(const ScratchFolder& folder, const std::string& library, const std::string& name) {
    std::filesystem::copy_file(
        tarnexctl::ToPath(library),
        folder.Path() / tarnexctl::ToPath(name + platform::LibraryExtension()));
}

TEST(List, PluginsComeInTheOrderOfTheirNamesWithGlobalIndexes) {
    const Json document = RunForJson({"list", Plugins()}, 0);
    ASSERT_EQ(document["effects"].size(), 7u);
    for (std::size_t i = 0; i < 7; ++i) EXPECT_EQ(document["effects"][i]["index"], i);
    EXPECT_EQ(document["effects"][0]["name"], "Invert\\Bare");
    EXPECT_EQ(document["effects"][2]["name"], "Blur\\Video");
    EXPECT_EQ(document["effects"][2]["flagWords"], "filter standard");
    EXPECT_EQ(document["effects"][2]["enabled"], true);
}

TEST(List, NamedPluginsKeepTheOrderOfTheCommandLine) {
    const std::string extension = platform::LibraryExtension();
    const Json document = RunForJson({"list", "-p", "video_effects" + extension, "--plugin",
                                      "bare_effects" + extension, Plugins()},
                                     0);
    EXPECT_EQ(document["effects"][0]["name"], "Blur\\Video");
    EXPECT_EQ(document["effects"][5]["name"], "Invert\\Bare");
}

TEST(List, CompositionsFollowThePlugins) {
    const Json document = RunForJson({"list", Plugins(), "-c", Compositions()}, 0);
    ASSERT_GT(document["effects"].size(), 7u);
    EXPECT_EQ(document["effects"][7]["index"], 7);
    EXPECT_EQ(document["effects"][7]["composition"], true);
}

TEST(List, NamesAloneAreOnePerLine) {
    const ToolRun run = RunTool({"list", "--names", Plugins()});
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(run.out, HasSubstr("Invert\\Bare\nSepia\\Bare\nBlur\\Video\n"));
}

TEST(List, PluginThatWouldTakeTheRestWithItIsNamedAndTheOthersAreListed) {
    const ScratchFolder folder;
    Install(folder, ToolPlugin("CrashesOnLoad"), "a_crash");
    Install(folder, Plugins() + "/bare_effects" + platform::LibraryExtension(), "b_good");
    Install(folder, ToolPlugin("ExitsProcess"), "c_exit");
    const std::string path = tarnexctl::FromPath(folder.Path());
    const Json document = RunForJson({"list", path}, 5);
    EXPECT_EQ(document["effects"].size(), 2u);
    EXPECT_THAT(CodesOf(document["libraries"][0]["findings"]), ElementsAre("P901"));
    EXPECT_EQ(document["libraries"][1]["findings"].size(), 0u);
    EXPECT_THAT(CodesOf(document["libraries"][2]["findings"]), ElementsAre("P903"));
    EXPECT_THAT(RunTool({"list", path}).err, HasSubstr("a_crash"));
}

#ifdef TARNEX_HAS_TEST_PLUGINS
TEST(List, PluginThatThrowsIsNamedAndTheOthersAreListed) {
    const ScratchFolder folder;
    Install(folder, TestPlugin("entry_throws"), "a_throws");
    Install(folder, TestPlugin("throws_at_start"), "b_throws");
    Install(folder, Plugins() + "/bare_effects" + platform::LibraryExtension(), "c_good");
    const Json document = RunForJson({"list", tarnexctl::FromPath(folder.Path())}, 1);
    EXPECT_EQ(document["effects"].size(), 2u);
    EXPECT_THAT(CodesOf(document["libraries"][0]["findings"]), ElementsAre("P203"));
    EXPECT_THAT(CodesOf(document["libraries"][1]["findings"]), ElementsAre("P211"));
}
#endif

TEST(List, ScriptThatIsNoCompositionIsNamed) {
    const ScratchFolder folder;
    folder.Write("bad.txt", "this is no composition");
    const Json document = RunForJson({"list", "-c", tarnexctl::FromPath(folder.Path())}, 1);
    EXPECT_EQ(document["compositions"][0]["script"], "bad.txt");
    EXPECT_THAT(document["compositions"][0]["problem"].get<std::string>(),
                HasSubstr("eCouldNotRegisterNewComposition"));
}

// More than one command line of the system holds: 32767 characters on Windows.
TEST(List, FolderOfHundredsOfLibrariesWithLongNamesIsListed) {
    const ScratchFolder folder;
    constexpr std::size_t kCount = 300;
    for (std::size_t i = 0; i < kCount; ++i) {
        const std::string name = std::to_string(1000 + i) + std::string(116, 'x');
        folder.Write(name + platform::LibraryExtension(), "no library");
    }
    Install(folder,
            tarnexctl::FromPath(ProgramFolder() / "plugins" /
                                (std::string("bare_effects") + platform::LibraryExtension())),
            "2000");
    const Json document = RunForJson({"list", tarnexctl::FromPath(folder.Path())}, 1);
    ASSERT_EQ(document["libraries"].size(), kCount + 1);
    for (std::size_t i = 0; i < kCount; ++i) {
        EXPECT_THAT(CodesOf(document["libraries"][i]["findings"]), ElementsAre("P101"));
    }
    EXPECT_EQ(document["effects"].size(), 2u);
}

TEST(List, WrongFoldersHaveTheirOwnExitCodes) {
    EXPECT_EQ(RunTool({"list"}).code, 2);
    EXPECT_EQ(RunTool({"list", "-p", "x"}).code, 2);
    EXPECT_EQ(RunTool({"list", "no such folder"}).code, 3);
    EXPECT_EQ(RunTool({"list", Plugins(), "-p", "no such file"}).code, 3);
    EXPECT_EQ(RunTool({"list", ToolPlugin("Unruly")}).code, 4);
}

TEST(Info, EffectIsFoundByIndexAndByName) {
    const Json byIndex = RunForJson({"info", "2", Plugins()}, 0);
    EXPECT_EQ(byIndex["name"], "Blur\\Video");
    ASSERT_EQ(byIndex["properties"].size(), 3u);
    EXPECT_EQ(byIndex["properties"][0]["name"], "Radius");
    EXPECT_EQ(byIndex["properties"][0]["type"], "float");
    EXPECT_EQ(byIndex["properties"][0]["access"], "read write");
    const Json byName = RunForJson({"info", "Blur\\Video", Plugins()}, 0);
    EXPECT_EQ(byName["index"], 2);
}

TEST(Info, CompositionIsShownWithItsParts) {
    const Json document = RunForJson({"info", "Glow\\Light", "-c", Compositions()}, 0);
    EXPECT_EQ(document["composition"], true);
    EXPECT_GT(document["parts"]["effects"].size(), 0u);
}

TEST(Info, UnknownEffectIsNotFoundAndTheNearestIsNamed) {
    const Json document = RunForJson({"info", "Blr", Plugins()}, 3);
    EXPECT_THAT(document["error"]["hint"].get<std::string>(), HasSubstr("Blur\\Video"));
    EXPECT_EQ(RunTool({"info", "99", Plugins()}).code, 3);
}

}  // namespace
