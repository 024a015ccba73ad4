#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "Tool.h"
#include "check/DiagnosticKinds.h"
#include "frame/Text.h"

namespace {

using namespace tooltest;
using tarnexctl::FromPath;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

const char kGood[] =
    "[SETUP]\nNAME = \"Soft Focus\"\nCATEGORY = \"Light\"\n[SOURCES]\nVideo = INPUT\n"
    "[EFFECTS]\nSoften = \"Blur\\Video\"\n[STRUCTURE]\nOUTPUT = Soften(Video)\n";

std::string Good(const std::string& name) {
    std::string script = kGood;
    return script.replace(script.find("Soft Focus"), 10, name);
}

std::vector<std::string> ScriptsIn(const std::string& folder) {
    std::vector<std::string> paths;
    for (const auto& entry : fs::directory_iterator(tarnexctl::ToPath(folder))) {
        if (entry.path().extension() == ".txt") paths.push_back(FromPath(entry.path()));
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::vector<std::string> With(std::string command, const std::vector<std::string>& files) {
    std::vector<std::string> arguments{std::move(command)};
    arguments.insert(arguments.end(), files.begin(), files.end());
    return arguments;
}

using Lines = std::vector<std::string>;  // "C208 20 22"

// The folder's list: each script with the codes, lines and columns that it must produce.
std::map<std::string, Lines> ExpectedMistakes() {
    std::map<std::string, Lines> expected;
    std::ifstream file(tarnexctl::ToPath(std::string(TARNEX_MISTAKES) + "/expected"));
    for (std::string line; std::getline(file, line);) {
        const std::size_t blank = line.find(' ');
        expected[line.substr(0, blank)].push_back(line.substr(blank + 1));
    }
    return expected;
}

TEST(Check, EveryMistakeOfTheFolderIsFoundInItsPlace) {
    const std::map<std::string, Lines> expected = ExpectedMistakes();
    const std::vector<std::string> scripts = ScriptsIn(TARNEX_MISTAKES);
    ASSERT_GE(scripts.size(), 100u);
    EXPECT_EQ(scripts.size(), expected.size());
    const Json document = RunForJson(With("check", scripts), 1);
    ASSERT_EQ(document["files"].size(), scripts.size());
    for (const Json& file : document["files"]) {
        const fs::path path = tarnexctl::ToPath(file["file"].get<std::string>());
        Lines found;
        for (const Json& diagnostic : file["diagnostics"]) {
            // Most of these scripts share one title.
            if (diagnostic["code"] == "C104") continue;
            found.push_back(diagnostic["code"].get<std::string>() + " " +
                            diagnostic["line"].dump() + " " + diagnostic["column"].dump());
        }
        const auto known = expected.find(FromPath(path.stem()));
        ASSERT_NE(known, expected.end()) << path;
        EXPECT_EQ(found, known->second) << path;
    }
}

TEST(Check, EveryCodeIsRaisedByAScriptOfTheFolder) {
    std::set<std::string> raised{"C104"};  // needs two scripts, and has a test of its own
    for (const auto& [script, lines] : ExpectedMistakes()) {
        for (const std::string& line : lines) raised.insert(line.substr(0, line.find(' ')));
    }
    for (const tarnexctl::DiagnosticKind& kind : tarnexctl::DiagnosticKinds()) {
        EXPECT_TRUE(raised.contains(kind.code)) << kind.code;
    }
}

TEST(Check, GoodExamplesHaveNothingToMend) {
    std::vector<std::string> arguments =
        With("check", ScriptsIn(std::string(TARNEX_EXAMPLES) + "/compositions"));
    ASSERT_GE(arguments.size(), 13u);
    arguments.push_back("--strict");
    const Json document = RunForJson(arguments, 0);
    EXPECT_EQ(document["warnings"], 0);
    EXPECT_EQ(document["errors"], 0);
}

TEST(Check, AMistakeIsShownWithItsSourceLineAMarkAndWhatWasMeant) {
    const std::string script = std::string(TARNEX_EXAMPLES) + "/faulty/misspelt_name.txt";
    const ToolRun run = RunTool({"check", script});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, script +
                           ":14:10: error: nothing declares \"Blurr\" [C208]\n"
                           "   14 | OUTPUT = Blurr(Video)\n"
                           "      |          ^~~~~\n"
                           "        did you mean \"Blur\"?\n" +
                           script +
                           ": status 8, STRUCTURE uses a name that nothing declares; 1 error\n");
    EXPECT_EQ(run.err, "");
}

TEST(Check, ShortFormatIsOneLineEach) {
    const std::string script = std::string(TARNEX_EXAMPLES) + "/faulty/misspelt_name.txt";
    const ToolRun run = RunTool({"check", "--format", "short", script});
    EXPECT_EQ(run.out, script +
                           ":14:10: error: nothing declares \"Blurr\"; did you mean \"Blur\"? "
                           "[C208]\n");
    const ScratchFolder scratch;
    EXPECT_EQ(RunTool({"check", "--format", "short", scratch.Write("a.txt", kGood)}).out, "");
    EXPECT_EQ(RunTool({"check", "--format", "long", script}).code, 2);
}

TEST(Check, TheMarkStandsUnderWhatItMarks) {
    const ScratchFolder scratch;
    std::string script = kGood;
    script.replace(script.find("OUTPUT = S"), 10, "\tOUTPUT\t= \"\xC3\xA4\" S");
    const ToolRun run = RunTool({"check", scratch.Write("a.txt", script)});
    EXPECT_THAT(run.out, HasSubstr("    9 |     OUTPUT  = \"\xC3\xA4\" Soften(Video)\n"
                                   "      |               ^~~\n"));
    EXPECT_THAT(run.out, HasSubstr("a.txt:9:11: error: "));
}

TEST(Check, WarningsAreFineUnlessTheCheckIsStrict) {
    const ScratchFolder scratch;
    const std::string script =
        scratch.Write("a.txt", std::string(kGood) + "[TIMELINE]\nSofen.\"Radius\" = 4\n");
    Json document = RunForJson({"check", script}, 0);
    EXPECT_EQ(document["warnings"], 1);
    EXPECT_EQ(document["files"][0]["diagnostics"][0]["severity"], "warning");
    document = RunForJson({"check", "--strict", script}, 1);
    EXPECT_EQ(document["errors"], 1);
    EXPECT_EQ(document["warnings"], 0);
    EXPECT_EQ(document["files"][0]["diagnostics"][0]["severity"], "error");
    EXPECT_THAT(RunTool({"check", "-s", script}).out, HasSubstr(": error: "));
}

TEST(Check, NotesAreFineEvenWhenTheCheckIsStrict) {
    const ScratchFolder scratch;
    const std::string script =
        scratch.Write("a.txt", std::string(kGood) + ";[TIMELINE]\n;Soften.\"Radius\" = 4\n");
    EXPECT_EQ(RunForJson({"check", "--strict", script}, 0)["notes"], 1);
}

TEST(Check, TwoScriptsOfOneTitleAreNamedAtTheSecond) {
    const ScratchFolder scratch;
    const std::string first = scratch.Write("a.txt", kGood);
    const std::string other = scratch.Write("b.txt", Good("Soft focus"));  // case counts
    const std::string second = scratch.Write("c.txt", kGood);
    const Json document = RunForJson({"check", first, other, second}, 1);
    EXPECT_THAT(CodesOf(document["files"][0]["diagnostics"]), IsEmpty());
    EXPECT_THAT(CodesOf(document["files"][1]["diagnostics"]), IsEmpty());
    EXPECT_THAT(CodesOf(document["files"][2]["diagnostics"]), ElementsAre("C104"));
    const Json diagnostic = document["files"][2]["diagnostics"][0];
    EXPECT_EQ(diagnostic["line"], 2);
    EXPECT_EQ(diagnostic["column"], 9);
    EXPECT_THAT(diagnostic["message"].get<std::string>(), HasSubstr("a.txt"));
    EXPECT_EQ(document["files"][2]["status"], 0);
}

TEST(Check, DocumentTellsEverySectionsStatus) {
    const ScratchFolder scratch;
    const std::string script = scratch.Write(
        "a.txt", std::string(kGood) + "[PROPERTIES]\nREAD ENVELOPED EXPENSIVE \"A\" = 4\n");
    const Json file = RunForJson({"check", script}, 1)["files"][0];
    EXPECT_EQ(file["status"], 0);
    EXPECT_EQ(file["statusText"], "read");
    EXPECT_EQ(file["sections"]["PROPERTIES"], 10);
    EXPECT_EQ(file["sections"]["MAPPING"], 9);
    const Json diagnostic = file["diagnostics"][0];
    EXPECT_EQ(diagnostic["code"], "C401");
    EXPECT_EQ(diagnostic["length"], 9);
    EXPECT_EQ(diagnostic["source"], "READ ENVELOPED EXPENSIVE \"A\" = 4");
}

TEST(Check, WhatCannotBeReadHasItsOwnExitCodeAndTheRestIsChecked) {
    const ScratchFolder scratch;
    const std::string good = scratch.Write("good.txt", kGood);
    const std::string empty = scratch.Write("empty.txt", "");
    const std::string binary = scratch.Write("binary.txt", std::string(5000, '\0') + kGood);
    const std::string archive = scratch.Write("a.mxf", std::string("ScriptArchive\0\1\0", 16));
    const std::string folder = FromPath(scratch.Path());
    EXPECT_EQ(RunTool({"check"}).code, 2);
    EXPECT_EQ(RunTool({"check", "--no-such-option", good}).code, 2);
    EXPECT_EQ(RunTool({"check", "no such file.txt"}).code, 3);
    EXPECT_EQ(RunTool({"check", folder}).code, 4);
    EXPECT_EQ(RunTool({"check", archive}).code, 4);
    EXPECT_EQ(RunTool({"check", good}).code, 0);
    const Json nothing = RunForJson({"check", empty}, 1);
    EXPECT_THAT(CodesOf(nothing["files"][0]["diagnostics"]), ElementsAre("C101"));
    EXPECT_EQ(nothing["files"][0]["status"], 1);
    EXPECT_THAT(CodesOf(RunForJson({"check", binary}, 1)["files"][0]["diagnostics"]),
                ElementsAre("C103"));
    const Json mixed = RunForJson({"check", "no such file.txt", empty, good}, 3);
    EXPECT_EQ(mixed["files"][0]["kind"], "not-found");
    EXPECT_EQ(mixed["files"][1]["errors"], 1);
    EXPECT_EQ(mixed["files"][2]["status"], 0);
    EXPECT_EQ(RunForJson({"check", folder, "no such file.txt"}, 4)["files"].size(), 2u);
    EXPECT_THAT(RunTool({"check", "no such file.txt"}).err,
                HasSubstr("\"no such file.txt\" does not exist"));
}

TEST(Check, AFileOf100MegabytesIsRefusedWithoutReadingIt) {
    const ScratchFolder scratch;
    const std::string path = scratch.Write("large.txt", "");
    fs::resize_file(tarnexctl::ToPath(path), 100 * 1024 * 1024);
    const ToolRun run = RunTool({"check", path});
    EXPECT_EQ(run.code, 4);
    EXPECT_THAT(run.err, HasSubstr("has 104857600 bytes: no script is as large"));
}

TEST(Check, BytesThatAreNoTextComeOutAsValidUtf8) {
    const ScratchFolder scratch;
    std::string bytes = std::string(kGood) + "[TIMELINE]\n";
    for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
    const std::string script = scratch.Write("odd.txt", bytes);
    const ToolRun run = RunTool({"check", script});  // RunTool checks the output
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.out, Not(HasSubstr("\x1B")));
    (void)RunForJson({"check", script}, 1);
}

TEST(Check, ColoursComeWhenAskedFor) {
    const std::string script = std::string(TARNEX_EXAMPLES) + "/faulty/misspelt_name.txt";
    EXPECT_THAT(RunTool({"check", script}).out, Not(HasSubstr("\x1B")));
    EXPECT_THAT(RunTool({"check", "--color", "always", script}).out, HasSubstr("\x1B[1;31merror"));
}

TEST(Check, MoreMistakesThanAnyoneReadsAreCounted) {
    const ScratchFolder scratch;
    std::string script = "[SETUP]\nNAME = \"N\"\nCATEGORY = \"C\"\n";
    for (int i = 0; i < 500; ++i) script += "WORD" + std::to_string(i) + " = 1\n";
    script += std::string(kGood).substr(std::string(kGood).find("[SOURCES]"));
    const std::string path = scratch.Write("a.txt", script);
    const Json file = RunForJson({"check", path}, 0)["files"][0];
    EXPECT_EQ(file["warnings"], 500);
    EXPECT_EQ(file["diagnostics"].size(), 100u);
    EXPECT_EQ(file["omitted"], 400);
    EXPECT_THAT(RunTool({"check", path}).out, HasSubstr("a.txt: and 400 more\n"));
}

TEST(Explain, ACodeComesWithItsMeaningAndBothExamples) {
    const ToolRun run = RunTool({"explain", "c304"});
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(run.out, StartsWith("C304, error: a \";\" within a text\n\n"));
    EXPECT_THAT(run.out, HasSubstr("Wrong:\n\n    [SETUP]\n    NAME = \"Soft; Focus\"\n"));
    EXPECT_THAT(run.out, HasSubstr("Right:\n\n    [SETUP]\n    NAME = \"Soft, Focus\"\n"));
    const Json document = RunForJson({"explain", "C304"}, 0);
    EXPECT_EQ(document["severity"], "error");
    EXPECT_THAT(document["wrong"].get<std::string>(), HasSubstr("Soft; Focus"));
}

TEST(Explain, WithoutACodeEveryOneIsListed) {
    const Json document = RunForJson({"explain"}, 0);
    EXPECT_EQ(document["codes"].size(),
              tarnexctl::DiagnosticKinds().size() + tarnexctl::FindingKinds().size());
    EXPECT_THAT(RunTool({"explain"}).out, HasSubstr("\nC208  error "));
}

TEST(Explain, CodesOfTheOtherCommandsAreKnownToo) {
    EXPECT_THAT(RunTool({"explain", "P106"}).out, HasSubstr("cannot be found"));
    EXPECT_EQ(RunTool({"explain", "C999"}).code, 3);
    EXPECT_EQ(RunForJson({"explain", "nonsense"}, 3)["error"]["kind"], "not-found");
}

}  // namespace
