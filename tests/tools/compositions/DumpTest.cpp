// tarnexctl dump: everything that is known of a description, as JSON.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "Tool.h"
#include "compositions/Files.h"
#include "compositions/JsonSchema.h"
#include "compositions/archive/SampleDescriptions.h"
#include "description/DescriptionDocument.h"
#include "frame/Text.h"

namespace {

using namespace tooltest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kDumpedScript =
    "[SETUP]\nNAME = \"B\xE4r\\1\"\nCATEGORY = \"Tests\"\nSPEED = -2147483648\nSWAP = FALSE\n"
    "%Art% = REGS : {\"a\", \"b\"}\n"
    "[SOURCES]\nIn = INPUT\nIn = INPUT\nBack = 3\nLogo = BITMAP : %Art% + \"x.png\"\n"
    "Film = MOVIE : \"y.avi\"\n"
    "[EFFECTS]\nBlur = \"Blur\\Video\"\nJoin = MIX\n"
    "[STRUCTURE]\nOUTPUT = Join(Blur(In), MIX(Logo, Film, Back))\n"
    "[PROPERTIES]\nWRITE \"Size\" = \"12\"\n"
    "[MAPPING]\nENVELOPED \"Size\" = Blur.\"Radius\"\n"
    "[ENVELOPES]\nFade = {2}, {0, 99999999999999999999.5, Hermite, 1, -2}, {25, HOLD}\n"
    "[TIMELINE]\nBlur.\"Gain\" = Fade\nBlur.\"Text\" = %Art%\nBlur.\"Mode\" = -3\n";

const Json kExpected = Json::parse(R"({
  "readStatus": {"status": 0, "text": "read"},
  "name": "B\uFFE4r\\1", "category": "Tests", "isFilter": false, "speed": -2147483648, "swap": true,
  "registryValues": [{"name": "ART", "first": "a", "second": "b", "third": ""}],
  "inputs": ["IN", "IN"],
  "numberedInputs": [{"name": "BACK", "number": 3}],
  "mediaSources": [
    {"name": "FILM", "kind": "movie", "items": [{"text": "y.avi", "isRegistryValue": false}]},
    {"name": "LOGO", "kind": "bitmap", "items": [{"text": "ART", "isRegistryValue": true},
                                                 {"text": "X.PNG", "isRegistryValue": false}]}],
  "effects": [{"name": "BLUR", "effect": "Blur\\Video"}],
  "mixes": ["JOIN", "MIX1"],
  "structure": [
    {"name": "JOIN", "kind": "mix", "inputs": [1, 3], "secondary": []},
    {"name": "BLUR", "kind": "effect", "inputs": [2], "secondary": []},
    {"name": "IN", "kind": "input", "inputs": [], "secondary": []},
    {"name": "MIX1", "kind": "mix", "inputs": [4, 5, 6], "secondary": []},
    {"name": "LOGO", "kind": "bitmap", "inputs": [], "secondary": []},
    {"name": "FILM", "kind": "movie", "inputs": [], "secondary": []},
    {"name": "BACK", "kind": "numbered input", "inputs": [], "secondary": []}],
  "properties": [{"name": "Size", "value": "\"12\"", "access": 3, "accessWords": "read write"}],
  "mappings": [{"property": "SIZE", "instance": "BLUR", "targetProperty": "Radius", "access": 11,
                "accessWords": "read write enveloped"}],
  "envelopes": [{"name": "FADE", "count": "2", "keys": [
    {"time": "0", "value": "99999999999999999999.5", "kind": "HERMITE",
     "firstParameter": "1", "secondParameter": "-2"},
    {"time": "25", "value": "1.0", "kind": "HOLD",
     "firstParameter": "0.0", "secondParameter": "0.0"}]}],
  "timelineEntries": [
    {"instance": "BLUR", "property": "TEXT", "value": "Art", "kind": "variable"},
    {"instance": "BLUR", "property": "MODE", "value": "-3", "kind": "number"}],
  "timelineEvents": [{"instance": "BLUR", "property": "GAIN", "envelope": "FADE"}]
})");

// Every text of it holds half a surrogate pair.
compositions::CompositionDescription Halves() {
    using compositions::UpperName;
    const std::wstring text{L'a', static_cast<wchar_t>(0xD800), L'b'};
    const UpperName name = UpperName::Verbatim(text);
    compositions::CompositionDescription d;
    d.name = d.category = text;
    d.inputs = d.mixes = {name};
    d.effectInstances = {{name, text}};
    d.mediaSources = {{name, {compositions::kMovie, {{false, text}}}}};
    d.mappings = {{name, 1, name, text}};
    d.properties = {{1, text, text}};
    d.envelopes = {{name, {text, {{text, text, name, text, text}}}}};
    d.timelineEntries = {{name, text, text, compositions::kString}};
    d.timelineEvents = {{name, text, name}};
    d.structure = compositions::StructureNode(name);
    d.numberedInputs = {{name, 1}};
    d.registryValues = {{name, {text, text, text}}};
    return d;
}

TEST(Dump, HoldsEverythingThatTheLibraryKeepsAsItKeepsIt) {
    const ScratchFolder scratch;
    const std::string file = scratch.Write("a.txt", kDumpedScript);
    const ToolRun run = RunTool({"dump", file});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, "");
    const Json document = Json::parse(run.out);
    for (const auto& [key, value] : kExpected.items()) EXPECT_EQ(document[key], value) << key;
    // Nothing but what is checked here.
    EXPECT_EQ(document.size(), kExpected.size() + 3);
    EXPECT_EQ(document["schema"], 1);
    EXPECT_EQ(document["source"], (Json{{"file", file}, {"kind", "script"}}));
    ASSERT_EQ(document["sections"].size(), 8u);
    for (const Json& section : document["sections"]) EXPECT_EQ(section["status"], 0) << section;
}

TEST(Dump, AnArchiveGivesTheSameButForTheStatuses) {
    const ScratchFolder scratch;
    const std::string archive = WriteArchiveOf(scratch, "a.dat", ReadDescription(kDumpedScript));
    const Json document = RunForJson({"dump", archive}, 0);
    for (const auto& [key, value] : kExpected.items()) EXPECT_EQ(document[key], value) << key;
    EXPECT_EQ(document["source"]["kind"], "archive");
    EXPECT_EQ(document["source"]["version"], 2);
    EXPECT_THAT(document["sections"], IsEmpty());
}

TEST(Dump, EveryDocumentIsValidAndTheSchemaHoldsNothingElse) {
    JsonSchema schema(Json::parse(ReadFile(TARNEX_DOCS "/description.schema.json")));
    const ScratchFolder scratch;
    std::vector<std::string> files = ExampleScripts();
    files.push_back(scratch.Write("all.txt", kDumpedScript));
    files.push_back(scratch.Write("empty.txt", ""));
    files.push_back(WriteArchiveOf(scratch, "everything.mxf", samples::Everything()));
    files.push_back(WriteArchiveOf(scratch, "halves.mxf", Halves()));
    for (unsigned seed = 0; seed < 20; ++seed) {
        files.push_back(WriteArchiveOf(scratch, std::to_string(seed), samples::Generated(seed)));
    }
    for (const std::string& file : files) {
        const Json document = tarnexctl::DescriptionDocument(tarnexctl::LoadDescription(file));
        EXPECT_THAT(schema.Check(document), IsEmpty()) << file;
        // It survives the way through a file.
        EXPECT_EQ(Json::parse(document.dump()), document) << file;
    }
    EXPECT_THAT(schema.NeverSeen(), ElementsAre());
}

TEST(Dump, HalfASurrogatePairIsGivenByItsUnits) {
    const ScratchFolder scratch;
    const Json document = RunForJson({"dump", WriteArchiveOf(scratch, "a", Halves())}, 0);
    EXPECT_EQ(document["name"], Json::parse(R"({"utf16": [97, 55296, 98]})"));
}

TEST(Dump, ARefusedScriptIsShownAsFarAsItWasReadWithEveryStatus) {
    const ToolRun run = RunTool({"dump", TARNEX_EXAMPLES "/faulty/misspelt_name.txt"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("status 8, STRUCTURE uses a name that nothing declares"));
    const Json document = Json::parse(run.out);
    EXPECT_EQ(document["readStatus"]["status"], 8);
    EXPECT_EQ(document["sections"][3]["status"], 8);
    EXPECT_EQ(document["sections"][4]["status"], -1);
    EXPECT_EQ(document["inputs"], Json::parse(R"(["VIDEO"])"));
    EXPECT_THAT(document["structure"], IsEmpty());
}

TEST(Dump, ASectionThatEndedAtARefusedStatementIsAFinding) {
    const ScratchFolder scratch;
    const std::string script = std::string(kDumpedScript) + "Blur.\"X\" = Nowhere\n";
    const ToolRun run = RunTool({"dump", scratch.Write("a.txt", script)});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("TIMELINE ended early: status 12"));
    EXPECT_EQ(Json::parse(run.out)["sections"][7]["status"], 12);
}

TEST(Dump, OutputGoesWholeIntoAFileThatIsNotTheInput) {
    const ScratchFolder scratch;
    const std::string script = scratch.Write("a.txt", kDumpedScript);
    const std::string output = scratch.Write("a.json", "old");
    const ToolRun run = RunTool({"dump", script, "-o", output});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(Json::parse(ReadFile(output))["category"], "Tests");
    EXPECT_EQ(RunForJson({"dump", script, "-o", output}, 0)["output"], output);
    EXPECT_EQ(RunTool({"dump", script, "-o", script}).code, 2);
    EXPECT_EQ(ReadFile(script), kDumpedScript);
    EXPECT_EQ(RunTool({"dump", script, "-o", ""}).code, 2);
    EXPECT_EQ(RunTool({"dump", script, "-o", script + "/below/x"}).code, 3);
    EXPECT_EQ(RunTool({"dump", script, "-o", PathOf(scratch)}).code, 4);
    EXPECT_THAT(NamesIn(scratch), ElementsAre("a.json", "a.txt"));
}

TEST(Dump, FilesThatHoldNoCompositionHaveTheirOwnExitCodes) {
    const ScratchFolder scratch;
    EXPECT_EQ(RunTool({"dump"}).code, 2);
    EXPECT_EQ(RunTool({"dump", "no such file"}).code, 3);
    EXPECT_EQ(RunTool({"dump", PathOf(scratch)}).code, 4);
    const ToolRun empty = RunTool({"dump", scratch.Write("empty", "")});
    EXPECT_EQ(empty.code, 1);
    EXPECT_THAT(empty.err, HasSubstr("no SETUP section"));
    const ToolRun binary = RunTool({"dump", scratch.Write("b", std::string(5000, '\0'))});
    EXPECT_EQ(binary.code, 4);
    EXPECT_EQ(binary.out, "");
    EXPECT_THAT(binary.err, HasSubstr("neither a script nor an archive"));
    const std::string archive = ReadFile(WriteArchiveOf(scratch, "x", samples::Small()));
    const ToolRun damaged = RunTool({"dump", scratch.Write("d", archive.substr(0, 20))});
    EXPECT_EQ(damaged.code, 4);
    EXPECT_THAT(damaged.err, HasSubstr("damaged archive: byte 20, the file ends"));
}

TEST(Dump, BytesOfEverySortAndDeepTreesComeOutAsValidJson) {
    const ScratchFolder scratch;
    std::string odd = "[SETUP]\nCATEGORY = \"c\"\nNAME = \"n";
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '"' && byte != ';') odd += static_cast<char>(byte);
    }
    odd += "\"\n[SOURCES]\n[EFFECTS]\n[STRUCTURE]\nOUTPUT =\n";
    const Json document = RunForJson({"dump", scratch.Write("odd", odd)}, 0);
    EXPECT_EQ(document["name"].get<std::string>().size(), 1 + 126u + 128 * 3);

    constexpr std::size_t kLevels = 30'000;
    std::string deep =
        "[SETUP]\nNAME = \"n\" CATEGORY = \"c\"\n[SOURCES]\n[EFFECTS]\n[STRUCTURE]\n"
        "OUTPUT = ";
    for (std::size_t i = 0; i < kLevels; ++i) deep += "MIX(";
    deep += std::string(kLevels, ')') + "\n";
    const ToolRun run = RunTool({"dump", scratch.Write("deep", deep)});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.out.find("\"MIX29999\"") != std::string::npos);
}

TEST(Dump, AFileOf100MegabytesIsRefused) {
    const ScratchFolder scratch;
    const std::string path = scratch.Write("large.txt", "[SETUP]\n");
    std::filesystem::resize_file(tarnexctl::ToPath(path), 100 * 1024 * 1024);
    for (const char* command : {"dump", "graph", "plot"}) {
        const ToolRun run = RunTool({command, path});
        EXPECT_EQ(run.code, 4) << command;
        EXPECT_THAT(run.err, HasSubstr("has 104857600 bytes: no script is as large")) << command;
    }
}

}  // namespace
