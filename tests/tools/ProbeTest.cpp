#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "Tool.h"
#include "frame/Text.h"
#include "platform/LibrarySearch.h"

namespace {

using namespace tooltest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

std::string ExamplePlugin(const std::string& name) {
    return tarnexctl::FromPath(ProgramFolder() / "plugins" / (name + platform::LibraryExtension()));
}

TEST(Probe, GoodPluginsHaveNoErrorAndEveryEffectIsReported) {
    const Json document =
        RunForJson({"probe", ExamplePlugin("video_effects"), ExamplePlugin("bare_effects")}, 0);
    ASSERT_EQ(document["libraries"].size(), 2u);
    EXPECT_EQ(document["libraries"][0]["effects"].size(), 5u);
    EXPECT_EQ(document["libraries"][0]["effects"][0]["id"], "Blur\\Video");
    EXPECT_EQ(document["libraries"][1]["effects"].size(), 2u);
    EXPECT_EQ(document["libraries"][1]["findings"].size(), 0u);
}

TEST(Probe, CrashHangAndExitAreFindingsAndTheOthersAreStillReported) {
    const Json document = RunForJson(
        {"probe", "--timeout", "3", ToolPlugin("CrashesOnLoad"), ToolPlugin("NeverReturns"),
         ToolPlugin("ExitsProcess"), ExamplePlugin("bare_effects")},
        5);
    const Json& libraries = document["libraries"];
    ASSERT_EQ(libraries.size(), 4u);
    EXPECT_EQ(CodesOf(libraries[0]["findings"]).at(0), "P901");
    EXPECT_THAT(libraries[0]["findings"][0]["detail"].get<std::string>(),
                HasSubstr("loading the library"));
    EXPECT_EQ(CodesOf(libraries[1]["findings"]).at(0), "P902");
    EXPECT_THAT(libraries[1]["findings"][0]["detail"].get<std::string>(),
                HasSubstr("CreateFactory"));
    EXPECT_EQ(CodesOf(libraries[2]["findings"]).at(0), "P903");
    EXPECT_EQ(libraries[3]["effects"].size(), 2u);
}

TEST(Probe, EveryBrokenRuleOfAnUnrulyEffectIsFound) {
    const Json document = RunForJson({"probe", ToolPlugin("Unruly")}, 1);
    const Json& library = document["libraries"][0];
    EXPECT_THAT(CodesOf(library["findings"]),
                IsSupersetOf({"P209", "P213", "P303", "P307", "P308", "P402", "P405", "P407",
                              "P409", "P410", "P411", "P413", "P417", "P418"}));
    // What it wrote is not taken for the child's report.
    EXPECT_THAT(library["wrote"].get<std::string>(), HasSubstr("{\"done\": true}"));
}

TEST(Probe, RenderingOperationsCanBeLeftOut) {
    const Json document = RunForJson({"probe", "--no-rendering", ToolPlugin("Unruly")}, 1);
    EXPECT_THAT(CodesOf(document["libraries"][0]["findings"]), Not(Contains("P308")));
}

TEST(Probe, FileThatIsNoLibraryIsNamedAsSuch) {
    const ScratchFolder scratch;
    const std::string text = scratch.Write("text.dll", "this is no library\n");
    const std::string empty = scratch.Write("empty.dll", "");
    const std::string cut = scratch.Write("cut.dll", std::string("MZ\0\0", 4));
    const Json document = RunForJson({"probe", text, empty, cut}, 1);
    EXPECT_THAT(CodesOf(document["libraries"][0]["findings"]), ElementsAre("P101"));
    EXPECT_THAT(CodesOf(document["libraries"][1]["findings"]), ElementsAre("P101"));
    EXPECT_THAT(CodesOf(document["libraries"][2]["findings"]), testing::SizeIs(1));
}

TEST(Probe, LibraryCutAnywhereIsNeverLoadedAsIfItWereWhole) {
    const ScratchFolder scratch;
    std::ifstream file(tarnexctl::ToPath(ExamplePlugin("bare_effects")), std::ios::binary);
    const std::string whole((std::istreambuf_iterator<char>(file)), {});
    for (const std::size_t size : {std::size_t{70}, std::size_t{500}, whole.size() / 2}) {
        const ToolRun run = RunTool({"probe", scratch.Write("cut.plugin", whole.substr(0, size))});
        EXPECT_TRUE(run.code == 1 || run.code == 5) << size << ": " << run.out;
    }
}

TEST(Probe, MissingFileIsNotFound) {
    EXPECT_EQ(RunForJson({"probe", "no such library.dll"}, 3)["error"]["kind"], "not-found");
}

TEST(Probe, WhatCannotBeReadIsNoFindingButAFailureOfInput) {
    if (std::string(platform::LibraryExtension()) == ".dll") GTEST_SKIP() << "no /dev here";
    EXPECT_EQ(RunForJson({"probe", "/dev/null"}, 4)["error"]["kind"], "input-output");
}

TEST(Probe, LibraryInAFolderWithOtherLettersIsProbed) {
    const ScratchFolder scratch;
    const auto copy = scratch.Path() / tarnexctl::ToPath("\xC3\xBC" + std::string(".plugin"));
    std::filesystem::copy_file(tarnexctl::ToPath(ExamplePlugin("bare_effects")), copy);
    const Json document = RunForJson({"probe", tarnexctl::FromPath(copy)}, 0);
    EXPECT_EQ(document["libraries"][0]["effects"].size(), 2u);
}

#ifdef TARNEX_HAS_TEST_PLUGINS
struct Broken {
    const char* plugin;
    const char* code;
};

TEST(Probe, EachBrokenPluginIsNamedWithItsCause) {
    const Broken kBroken[] = {
        {"no_entry", "P105"},        {"entry_fails", "P201"},     {"entry_empty", "P202"},
        {"entry_throws", "P203"},    {"count_changes", "P205"},   {"create_fails", "P210"},
        {"throws_at_start", "P211"}, {"null_descriptor", "P301"}, {"needs_library", "P106"}};
    std::vector<std::string> line = {"probe"};
    for (const Broken& broken : kBroken) line.push_back(TestPlugin(broken.plugin));
    line.push_back(TestPlugin("plain"));
    const Json document = RunForJson(line, 1);
    for (std::size_t i = 0; i < std::size(kBroken); ++i) {
        EXPECT_THAT(CodesOf(document["libraries"][i]["findings"]), Contains(kBroken[i].code))
            << kBroken[i].plugin << document["libraries"][i].dump(1);
    }
    EXPECT_GT(document["libraries"].back()["effects"].size(), 0u);
}

TEST(Probe, MissingDependencyIsNamed) {
    const Json document = RunForJson({"probe", TestPlugin("needs_library")}, 1);
    EXPECT_THAT(document["libraries"][0]["findings"][0]["detail"].get<std::string>(),
                HasSubstr("needed_library"));
}
#endif

}  // namespace
