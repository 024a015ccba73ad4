// tarnexctl graph: the structure as DOT and as a picture.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/Files.h"
#include "compositions/TextForms.h"
#include "compositions/archive/SampleDescriptions.h"
#include "drawing/Dot.h"
#include "drawing/Graph.h"
#include "drawing/GraphPicture.h"
#include "frame/ExitCode.h"

namespace {

using namespace tooltest;
using tarnexctl::DotText;
using tarnexctl::GraphPicture;
using tarnexctl::MakeGraph;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kDrawnScript =
    "[SETUP]\nNAME = \"Two\" CATEGORY = \"Tests\"\n%Art% = REGS : {\"a\", \"b\"}\n"
    "[SOURCES]\nIn = INPUT\nBack = 3\nLogo = BITMAP : %Art% + \"x.png\"\n"
    "[EFFECTS]\nBlur = \"Blur\\Video\"\nJoin = MIX\n"
    "[STRUCTURE]\nOUTPUT = Join(Blur(In), MIX(Logo, Back), Blur)\n"
    "[MAPPING]\nWRITE \"Size\" = Blur.\"Radius\"\n";

TEST(Graph, DotHoldsSourcesEffectsMixesAndMappings) {
    const ScratchFolder scratch;
    const ToolRun run = RunTool({"graph", scratch.Write("a.txt", kDrawnScript)});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, R"(digraph "Two\\Tests" {
    rankdir=LR;
    label="Two\\Tests";
    node [fontname="sans-serif"];
    edge [fontname="sans-serif"];
    n0 [shape=doublecircle, label="OUTPUT"];
    n1 [shape=diamond, label="JOIN"];
    n2 [shape=box, label="BLUR\nBlur\\Video"];
    n3 [shape=note, label="SIZE"];
    n4 [shape=cds, label="IN"];
    n5 [shape=diamond, label="MIX1"];
    n6 [shape=folder, label="LOGO\n%ART%X.PNG"];
    n7 [shape=cds, label="BACK\ninput 3"];
    n8 [shape=box, label="BLUR\nBlur\\Video"];
    n1 -> n0;
    n2 -> n1;
    n3 -> n2 [style=dashed, label="Radius"];
    n4 -> n2;
    n5 -> n1;
    n6 -> n5;
    n7 -> n5;
    n8 -> n1;
}
)");
    EXPECT_EQ(DotProblem(run.out), "");
}

TEST(Graph, ThePictureShowsEveryNameAndTheMappingOnItsEdge) {
    const ScratchFolder scratch;
    const ToolRun run = RunTool({"graph", "--format", "svg", scratch.Write("a.txt", kDrawnScript)});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(XmlProblem(run.out), "");
    EXPECT_THAT(XmlTexts(run.out, "text"),
                ElementsAre("Two\\Tests", "Radius", "OUTPUT", "JOIN", "BLUR", "Blur\\Video", "SIZE",
                            "IN", "MIX1", "LOGO", "%ART%X.PNG", "BACK", "input 3", "BLUR",
                            "Blur\\Video", "input", "media", "effect", "mix", "property"));
    EXPECT_THAT(run.out, HasSubstr("class=\"mapping\""));
}

TEST(Graph, JsonHoldsTheNodes) {
    const ScratchFolder scratch;
    const Json document = RunForJson({"graph", scratch.Write("a.txt", kDrawnScript)}, 0);
    ASSERT_EQ(document["nodes"].size(), 9u);
    EXPECT_EQ(document["nodes"][3], Json::parse(R"({"name": "SIZE", "kind": "property", "feeds": 2,
                                                    "targetProperty": "Radius"})"));
}

TEST(Graph, TheOutputFilesExtensionDecidesWithoutAFormat) {
    const ScratchFolder scratch;
    const std::string script = scratch.Write("a.txt", kDrawnScript);
    EXPECT_EQ(RunTool({"graph", script, "-o", PathOf(scratch) + "/g.svg"}).code, 0);
    EXPECT_EQ(XmlProblem(ReadFile(PathOf(scratch) + "/g.svg")), "");
    EXPECT_EQ(RunTool({"graph", script, "-o", PathOf(scratch) + "/g.gv"}).code, 0);
    EXPECT_EQ(DotProblem(ReadFile(PathOf(scratch) + "/g.gv")), "");
    EXPECT_EQ(RunTool({"graph", script, "--format", "dot", "-o", script}).code, 2);
    EXPECT_EQ(RunTool({"graph", script, "--format", "png"}).code, 2);
    EXPECT_THAT(NamesIn(scratch), ElementsAre("a.txt", "g.gv", "g.svg"));
}

TEST(Graph, EveryExampleIsDrawnInBothForms) {
    for (const std::string& path : ExampleScripts()) {
        const tarnexctl::Graph graph = MakeGraph(ReadDescription(ReadFile(path)));
        EXPECT_FALSE(graph.IsEmpty()) << path;
        EXPECT_EQ(DotProblem(DotText(graph)), "") << path;
        EXPECT_EQ(XmlProblem(GraphPicture(graph)), "") << path;
    }
}

TEST(Graph, WhateverAnArchiveHoldsIsDrawnInBothForms) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        const tarnexctl::Graph graph = MakeGraph(samples::Generated(seed));
        ASSERT_EQ(DotProblem(DotText(graph)), "") << seed;
        ASSERT_EQ(XmlProblem(GraphPicture(graph)), "") << seed;
    }
}

TEST(Graph, MarkupQuotesAndBytesOfAScriptAreShownAsTheyAre) {
    const ScratchFolder scratch;
    std::string script = kDrawnScript;
    // The letter stands in UTF-8, as an author's editor wrote it.
    script.replace(script.find("Blur\\Video"), 10, "a<b>&'\\N\\\xC3\xA4\x01 </text>");
    const std::string file = scratch.Write("a.txt", script);
    const ToolRun picture = RunTool({"graph", "--format", "svg", file});
    EXPECT_EQ(XmlProblem(picture.out), "");
    EXPECT_THAT(XmlTexts(picture.out, "text"), Contains("a<b>&'\\N\\\xC3\xA4\\x01 </text>"));
    const ToolRun dot = RunTool({"graph", file});
    EXPECT_EQ(DotProblem(dot.out), "");
    EXPECT_THAT(dot.out, HasSubstr("BLUR\\na<b>&'\\\\N\\\\\xC3\xA4\\\\x01 </text>\""));
}

TEST(Graph, NothingFeedsTheOutputIsAFindingAndTheOutputIsDrawn) {
    const ScratchFolder scratch;
    const std::string script =
        "[SETUP]\nNAME = \"n\" CATEGORY = \"c\"\n[SOURCES]\n[EFFECTS]\n[STRUCTURE]\nOUTPUT =\n";
    for (const char* format : {"dot", "svg"}) {
        const ToolRun run = RunTool({"graph", "--format", format, scratch.Write("a.txt", script)});
        EXPECT_EQ(run.code, 1);
        EXPECT_THAT(run.err, HasSubstr("STRUCTURE is empty, nothing feeds the output"));
        EXPECT_THAT(run.out, HasSubstr("OUTPUT"));
    }
}

TEST(Graph, ARefusedScriptIsAFindingAndSaysWhy) {
    const ToolRun run = RunTool({"graph", TARNEX_EXAMPLES "/faulty/misspelt_name.txt"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("status 8, STRUCTURE uses a name that nothing declares"));
    EXPECT_EQ(DotProblem(run.out), "");
    // Refused for its inputs, its structure is whole.
    const ScratchFolder scratch;
    std::string filter = kDrawnScript;
    filter.insert(filter.find("%Art%"), "IS_FILTER = TRUE\n");
    const ToolRun whole = RunTool({"graph", scratch.Write("a.txt", filter)});
    EXPECT_EQ(whole.code, 1);
    EXPECT_THAT(whole.err, HasSubstr("status 20"));
    EXPECT_THAT(whole.out, HasSubstr("JOIN"));
}

TEST(Graph, TooManyNodesForAPictureAreRefusedAndDotHasNoLimit) {
    const ScratchFolder scratch;
    std::string deep =
        "[SETUP]\nNAME = \"n\" CATEGORY = \"c\"\n[SOURCES]\n[EFFECTS]\n[STRUCTURE]\n"
        "OUTPUT = ";
    constexpr std::size_t kLevels = 30'000;
    for (std::size_t i = 0; i < kLevels; ++i) deep += "MIX(";
    const std::string file = scratch.Write("deep", deep + std::string(kLevels, ')') + "\n");
    const std::string output = PathOf(scratch) + "/x.svg";
    const ToolRun run = RunTool({"graph", "-o", output, file});
    EXPECT_EQ(run.code, 4);
    EXPECT_THAT(run.err, HasSubstr("30001 nodes are too many for a picture"));
    EXPECT_FALSE(std::filesystem::exists(scratch.Path() / "x.svg"));
    const ToolRun dot = RunTool({"graph", file});
    EXPECT_EQ(dot.code, 0);
    EXPECT_TRUE(dot.out.ends_with("n30000 -> n29999;\n}\n"));
}

TEST(Graph, AMillionLevelsAreWritten) {
    compositions::CompositionDescription description;
    description.structure = samples::Chain(1'000'000);
    EXPECT_TRUE(DotText(MakeGraph(description)).ends_with("n1000000 -> n999999;\n}\n"));
}

TEST(Graph, TheLimitIsExact) {
    tarnexctl::Graph graph;
    graph.nodes.resize(tarnexctl::kMostDrawnNodes);
    EXPECT_EQ(XmlProblem(GraphPicture(graph)), "");
    graph.nodes.emplace_back();
    EXPECT_THROW(GraphPicture(graph), tarnexctl::Failure);
}

TEST(Graph, FilesThatHoldNoCompositionHaveTheirOwnExitCodes) {
    const ScratchFolder scratch;
    EXPECT_EQ(RunTool({"graph"}).code, 2);
    EXPECT_EQ(RunTool({"graph", "no such file"}).code, 3);
    EXPECT_EQ(RunTool({"graph", PathOf(scratch)}).code, 4);
    EXPECT_EQ(RunTool({"graph", scratch.Write("empty", "")}).code, 1);
    EXPECT_EQ(RunTool({"graph", scratch.Write("b", std::string(5000, '\0'))}).code, 4);
    const std::string archive = ArchiveBytesOf(samples::Small());
    EXPECT_EQ(RunTool({"graph", scratch.Write("d", archive.substr(0, 40))}).code, 4);
    EXPECT_EQ(RunTool({"graph", scratch.Write("w", archive)}).code, 0);
}

}  // namespace
