// What every command has in common: exit codes, one JSON document, help, completions, the manual.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tool.h"
#include "frame/CommandTable.h"
#include "frame/Completion.h"
#include "platform/LibrarySearch.h"

namespace {

using namespace tooltest;
using testing::HasSubstr;
using testing::Not;

TEST(CommandLine, NoCommandIsAUsageErrorAndShowsTheHelpOnStandardError) {
    const ToolRun run = RunTool({});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr("Commands:"));
}

TEST(CommandLine, UnknownCommandIsAUsageErrorAndTheNearestOneIsNamed) {
    const ToolRun run = RunTool({"lsit"});
    EXPECT_EQ(run.code, 2);
    EXPECT_THAT(run.err, HasSubstr("did you mean \"list\"?"));
}

TEST(CommandLine, UnknownOptionMissingArgumentAndWrongChoiceAreUsageErrors) {
    EXPECT_EQ(RunTool({"log", "--nonsense", "x"}).code, 2);
    EXPECT_EQ(RunTool({"log"}).code, 2);
    EXPECT_EQ(RunTool({"log", "a", "b"}).code, 2);
    EXPECT_EQ(RunTool({"log", "--color", "sometimes", "x"}).code, 2);
    EXPECT_EQ(RunTool({"log", "--thread", "-1", "x"}).code, 2);
    EXPECT_EQ(RunTool({"log", "--thread", "12x", "x"}).code, 2);
    EXPECT_EQ(RunTool({"completion", "tcsh"}).code, 2);
}

TEST(CommandLine, JsonHoldsFailuresOfTheCommandLineToo) {
    const Json document = RunForJson({"nonsense"}, 2);
    EXPECT_EQ(document["error"]["kind"], "usage");
    EXPECT_EQ(RunForJson({"log", "no such file"}, 3)["error"]["kind"], "not-found");
}

TEST(CommandLine, EveryCommandHasHelpWithAnExample) {
    for (const tarnexctl::CommandSpec* command : tarnexctl::OfferedCommands()) {
        const ToolRun run = RunTool({command->name, "--help"});
        EXPECT_EQ(run.code, 0) << command->name;
        EXPECT_THAT(run.out, HasSubstr("Examples:\n  ")) << command->name;
        EXPECT_THAT(run.out, HasSubstr("Usage:\n  tarnexctl " + command->name));
        EXPECT_EQ(run.err, "");
    }
}

TEST(CommandLine, HelpListsCommandsButNotTheHiddenOnes) {
    const ToolRun run = RunTool({"--help"});
    EXPECT_EQ(run.code, 0);
    for (const tarnexctl::CommandSpec& command : tarnexctl::CommandTable()) {
        const std::string line = "\n  " + command.name + " ";
        if (command.hidden) {
            EXPECT_THAT(run.out, Not(HasSubstr(line)));
        } else {
            EXPECT_THAT(run.out, HasSubstr(line));
        }
    }
}

TEST(CommandLine, HelpAndVersionKeepToOneDocumentWithJson) {
    EXPECT_TRUE(RunForJson({"--help"}, 0).contains("commands"));
    EXPECT_TRUE(RunForJson({"--version"}, 0).contains("version"));
    EXPECT_TRUE(RunForJson({"log", "--help"}, 0).contains("usage"));
}

TEST(CommandLine, ColoursComeOnlyWhereTheyWereAskedFor) {
    const char kEscape[] = "\x1B[";
    EXPECT_THAT(RunTool({"--help"}).out, Not(HasSubstr(kEscape)));
    EXPECT_THAT(RunTool({"log", "--help", "--color", "auto"}).out, Not(HasSubstr(kEscape)));
    const ScratchFolder scratch;
    const std::string log = scratch.Write("a.log", "host\n000000:000 [    1] hello\n");
    EXPECT_THAT(RunTool({"log", "--color", "always", log}).out, HasSubstr(kEscape));
    EXPECT_THAT(RunTool({"log", "--color", "never", log}).out, Not(HasSubstr(kEscape)));
}

TEST(CommandLine, EveryCompletionKnowsEveryCommandAndOption) {
    for (const std::string& shell : tarnexctl::CompletionShells()) {
        const ToolRun run = RunTool({"completion", shell});
        EXPECT_EQ(run.code, 0);
        for (const tarnexctl::CommandSpec* command : tarnexctl::OfferedCommands()) {
            EXPECT_THAT(run.out, HasSubstr(command->name)) << shell;
            for (const tarnexctl::OptionSpec& option : command->options) {
                // One shell names long options without their dashes.
                EXPECT_THAT(run.out, HasSubstr(option.name.substr(2))) << shell;
            }
        }
        EXPECT_THAT(run.out, Not(HasSubstr("probe-child"))) << shell;
    }
}

TEST(CommandLine, ManualHoldsEveryCommandAndExitCode) {
    const ToolRun run = RunTool({"manpage"});
    EXPECT_EQ(run.code, 0);
    for (const tarnexctl::CommandSpec* command : tarnexctl::OfferedCommands()) {
        EXPECT_THAT(run.out, HasSubstr(".SS " + command->name));
    }
    for (const char* code : {"\\fB0\\fR", "\\fB6\\fR"}) EXPECT_THAT(run.out, HasSubstr(code));
}

TEST(CommandLine, ColoursObeyTheirOptionWhereTheLineCannotBeReadToo) {
    const char kEscape[] = "\x1B[";
    EXPECT_THAT(RunTool({"lsit", "--color", "always"}).err, HasSubstr(kEscape));
    EXPECT_THAT(RunTool({"--color=always", "log"}).err, HasSubstr(kEscape));
    EXPECT_THAT(RunTool({"log", "--help", "--color", "always"}).out, HasSubstr(kEscape));
    EXPECT_EQ(RunForJson({"log"}, 2)["command"], "log");
}

bool HasTerminals() {
    return std::string(platform::LibraryExtension()) != ".dll";
}

TEST(CommandLine, TerminalShowsColoursUnlessToldOtherwise) {
    if (!HasTerminals()) GTEST_SKIP() << "no terminal can be made here";
    const char kEscape[] = "\x1B[";
    EXPECT_THAT(RunOnTerminal("lsit"), HasSubstr("\x1B[1;31merror"));
    EXPECT_THAT(RunOnTerminal("lsit --color never"), Not(HasSubstr(kEscape)));
    EXPECT_THAT(RunOnTerminal("--help"), HasSubstr(kEscape));
    EXPECT_THAT(RunOnTerminal("--help", "NO_COLOR=1"), Not(HasSubstr(kEscape)));
    EXPECT_THAT(RunOnTerminal("--help --color always", "NO_COLOR=1"), HasSubstr(kEscape));
}

TEST(CommandLine, TerminalShowsWhatTakesLongAndClearsItAway) {
    if (!HasTerminals()) GTEST_SKIP() << "no terminal can be made here";
    const std::string line = "probe --color never --timeout 3 '" + ToolPlugin("NeverReturns") + "'";
    const std::string shown = RunOnTerminal(line);
    EXPECT_THAT(shown, HasSubstr("\r\x1B[KProbing library 1 of 1 (1 s)"));
    EXPECT_THAT(shown, HasSubstr("\r\x1B[KNeverReturns.plugin: has errors"));
    EXPECT_THAT(RunOnTerminal("explain C304"), Not(HasSubstr("Working")));
}

// What bash would offer for the last of the words.
std::string Offered(const std::string& words) {
    const ToolRun run = RunShell(
        "source <(\"$1\" completion bash); cd \"$(dirname \"$1\")\"; COMP_WORDS=(tarnexctl " +
            words +
            "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _tarnexctl; echo \"${COMPREPLY[@]}\"",
        "/bin/bash");
    EXPECT_EQ(run.err, "");
    return run.out;
}

TEST(CommandLine, BashCompletesEveryArgumentInItsTurn) {
    if (!HasTerminals()) GTEST_SKIP() << "no bash here";
    EXPECT_EQ(Offered("gra"), "graph\n");
    EXPECT_EQ(Offered("archive ve"), "verify\n");
    EXPECT_THAT(Offered("archive verify plug"), HasSubstr("plugins"));
    EXPECT_THAT(Offered("archive -o out extract plug"), HasSubstr("plugins"));
    EXPECT_EQ(Offered("info 0 plug"), "plugins\n");
    EXPECT_EQ(Offered("check plugins --form"), "--format\n");
    EXPECT_EQ(Offered("check --format sh"), "short\n");
    EXPECT_THAT(Offered("check plugins plug"), HasSubstr("plugins"));
    EXPECT_EQ(Offered("dump plugins plug"), "\n");
}

}  // namespace
