// The check itself, on scripts that nobody would write: it must end, and stay within the script.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "check/CheckReport.h"
#include "check/Comments.h"
#include "check/KeyTimes.h"
#include "check/ScriptCheck.h"
#include "check/SourceText.h"
#include "frame/Text.h"

namespace {

using namespace tarnexctl;
using testing::ElementsAre;
using testing::IsEmpty;

const char kStart[] =
    "[SETUP] NAME = \"n\" CATEGORY = \"c\" [SOURCES] V = INPUT [EFFECTS] E = \"e\" ";

std::string Repeated(const std::string& piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
}

std::vector<std::string> Codes(const std::string& script) {
    const ScriptVerdict verdict = ScriptChecker().Check(script);
    std::vector<std::string> codes;
    for (const Diagnostic& diagnostic : verdict.diagnostics.List()) {
        codes.push_back(diagnostic.kind->code);
    }
    return codes;
}

// Checks, writes the report in its document form, and holds every range to the script.
ScriptVerdict CheckAll(const std::string& script) {
    ScriptVerdict verdict = ScriptChecker().Check(script);
    for (const Diagnostic& diagnostic : verdict.diagnostics.List()) {
        EXPECT_LE(diagnostic.range.begin, diagnostic.range.end) << diagnostic.kind->code;
        EXPECT_LE(diagnostic.range.end, std::max<std::size_t>(script.size(), 1))
            << diagnostic.kind->code;
    }
    const Json document = VerdictDocument("f", script, verdict, false);
    EXPECT_NO_THROW((void)document.dump());  // throws for text that is no UTF-8
    return verdict;
}

TEST(ScriptCheck, HostileScriptsEndInAMessage) {
    const std::size_t many = 5'000;
    const std::string scripts[] = {
        kStart + std::string("[STRUCTURE] OUTPUT = ") + Repeated("E ", many),
        kStart + std::string("[STRUCTURE] OUTPUT = ") + Repeated("E(", many),
        kStart + std::string("[STRUCTURE] OUTPUT = ") + Repeated("MIX(", many) +
            Repeated(")", many),
        kStart + std::string("[STRUCTURE] OUTPUT = E [PROPERTIES] ") + Repeated("READ ", many),
        kStart + std::string("[STRUCTURE] OUTPUT = E [MAPPING] \"a\" = ") +
            Repeated("E.\"b\",", many),
        kStart + std::string("[STRUCTURE] OUTPUT = E [ENVELOPES] A = {1}") +
            Repeated(",{0,0,HOLD}", many),
        kStart + std::string("[STRUCTURE] OUTPUT = E [TIMELINE] ") + Repeated("F.\"b\" = 1 ", many),
        std::string(kStart) + "\"" + Repeated("open ", many),
        Repeated("[", many),
        Repeated("[ ", many),
        Repeated("[SETUP]", many),
        Repeated("[SETUP] ", many),
        Repeated("[NONE] ", many),
        Repeated("\"", many),
        Repeated(";\n", many),
        Repeated("a;\n", many),
        Repeated("\"a;b\"\n", many),
        Repeated(";[SETUP]\n", many),
        Repeated("-", many),
        Repeated("[SETUP] A=1 ", many),
        "[SETUP] " + Repeated("A = 1 ", many),
        "[SETUP] " + Repeated("NAME = \"n\" ", many),
        kStart + Repeated("X = MIX ", many) + "[STRUCTURE] OUTPUT = E",
    };
    for (const std::string& script : scripts) {
        const ScriptVerdict verdict = CheckAll(script);
        EXPECT_FALSE(verdict.diagnostics.IsEmpty()) << script.substr(0, 120);
        EXPECT_LE(verdict.diagnostics.List().size(), Diagnostics::kMost);
    }
}

TEST(ScriptCheck, EveryBeginningOfAScriptIsChecked) {
    const std::string script =
        "; note\n[SETUP]\nNAME = \"n\" ; x\nCATEGORY = \"c\"\n%V% = REGS : {\"a\", \"b\"}\n"
        "[SOURCES]\nA = INPUT\nB = 2\nC = MOVIE : %V% + \"d\"\n[EFFECTS]\nE = \"e\"\nM = MIX\n"
        "[STRUCTURE]\nOUTPUT = M(E(A, B), C)\n[PROPERTIES]\nREAD \"p\" = \"q\"\n"
        "[MAPPING]\nREAD \"p\" = E.\"r\"\n[ENVELOPES]\nF = {2}, {0, 0, HERMITE, 1, 2}, {1, HOLD}\n"
        "[TIMELINE]\nE.\"x\", E.\"y\" = F\nE.\"z\" = %V%\n";
    EXPECT_THAT(Codes(script), IsEmpty());
    for (std::size_t length = 0; length < script.size(); ++length) {
        const ScriptVerdict verdict = CheckAll(script.substr(0, length));
        // The script reads once it holds the section that must be there last.
        if (verdict.readStatus != 0) {
            EXPECT_GT(verdict.diagnostics.Count(Severity::kError), 0u) << length;
        }
    }
}

TEST(ScriptCheck, ARefusedScriptHasAnErrorWhateverIsChangedInIt) {
    const std::string script =
        "[SETUP] NAME = \"n\" CATEGORY = \"c\" IS_FILTER = TRUE\n[SOURCES] V = INPUT\n"
        "[EFFECTS] E = \"e\"\n[STRUCTURE] OUTPUT = E(V)\n[PROPERTIES] READ \"p\" = 1\n"
        "[MAPPING] READ \"p\" = E.\"q\"\n[ENVELOPES] F = {1}, {0, 1, HOLD}, {2, HOLD}\n"
        "[TIMELINE] E.\"r\" = F\n";
    const std::string alphabet = "[]\"(){};,.=+-%:_ \n\tAE09\xE9" + std::string(1, '\0');
    std::mt19937 random(20261121);
    const auto pick = [&](std::size_t count) { return random() % count; };
    for (int round = 0; round < 1500; ++round) {
        std::string changed = script;
        for (std::size_t changes = 1 + pick(4); changes > 0; --changes) {
            const std::size_t at = pick(changed.size());
            const char character = alphabet[pick(alphabet.size())];
            switch (pick(3)) {
                case 0:
                    changed[at] = character;
                    break;
                case 1:
                    changed.erase(at, 1 + pick(5));
                    break;
                default:
                    changed.insert(at, 1, character);
            }
        }
        const ScriptVerdict verdict = CheckAll(changed);
        const bool hasError = verdict.diagnostics.Count(Severity::kError) > 0;
        EXPECT_TRUE(verdict.readStatus == 0 || hasError) << changed;
    }
}

// How many of that code a script with these sections raises.
std::size_t Raised(const char* code, const std::string& sections) {
    const std::vector<std::string> codes =
        Codes(std::string(kStart) + "[STRUCTURE] OUTPUT = E(V)\n" + sections);
    return static_cast<std::size_t>(std::ranges::count(codes, code));
}

TEST(ScriptCheck, TextThatATargetsFullStopPassesOverIsTold) {
    for (const char* target :
         {"E.a, E.\"p\"", "E.a\"\"", "E..\"p\"", "E.\n[X] \"p\"", "E ./\"p\""}) {
        EXPECT_EQ(Raised("C321", std::string("[MAPPING] \"m\" = ") + target), 1u) << target;
        EXPECT_EQ(Raised("C321", std::string("[TIMELINE] ") + target + " = 1"), 1u) << target;
    }
    for (const char* target : {"E.\"p\"", "E . \"p\"", "E\n.\t\"p\"", "E.\"\"", "E.\" p\""}) {
        EXPECT_EQ(Raised("C321", std::string("[MAPPING] \"m\" = ") + target), 0u) << target;
        EXPECT_EQ(Raised("C321", std::string("[TIMELINE] ") + target + " = 1"), 0u) << target;
    }
    EXPECT_EQ(Raised("C321", "[TIMELINE] E.\"a\", E.b, E.\"c\", E.d, E.\"e\" = 1"), 2u);
}

TEST(ScriptCheck, TextThatIsReadIntoANumberIsTold) {
    for (const char* number :
         {"-auto\n5", "12_3", "-.5", "--5", "1.x5", "1. 5", "1 .x5", "5 .x\nREAD b 7"}) {
        EXPECT_EQ(Raised("C322", std::string("[PROPERTIES] READ \"p\" = ") + number), 1u) << number;
        EXPECT_EQ(Raised("C322", std::string("[TIMELINE] E.\"p\" = ") + number), 1u) << number;
    }
    for (const char* value : {"5", "-5", "- 5", "1.5", "1 .5", "-0.25", "\"-a\"", "\"1_2\""}) {
        EXPECT_EQ(Raised("C322", std::string("[PROPERTIES] READ \"p\" = ") + value), 0u) << value;
        EXPECT_EQ(Raised("C322", std::string("[TIMELINE] E.\"p\" = ") + value), 0u) << value;
    }
}

TEST(ScriptCheck, ACheckerIsUsedAgain) {
    ScriptChecker checker;
    EXPECT_FALSE(checker.Check("[SETUP] NAME = \"n\"").diagnostics.IsEmpty());
    EXPECT_TRUE(
        checker.Check(std::string(kStart) + "[STRUCTURE] OUTPUT = E(V)").diagnostics.IsEmpty());
}

TEST(SourceText, PlacesCountCharacters) {
    const std::string text =
        "a\tb\xC3\xA9"
        "c\r\nsecond\n\nlast";
    const SourceText source(text);
    const auto at = [&](const char* word) {
        const Place place = source.At(text.find(word));
        return std::to_string(place.line) + ":" + std::to_string(place.column);
    };
    EXPECT_EQ(at("b"), "1:3");
    EXPECT_EQ(at("c\r"), "1:5");
    EXPECT_EQ(at("second"), "2:1");
    EXPECT_EQ(at("last"), "4:1");
    EXPECT_EQ(source.At(text.size() + 100).line, 4u);
    EXPECT_EQ(source.At(text.size()).column, 5u);
}

TEST(SourceText, BytesThatAreNoUtf8CountOneEach) {
    const std::string text = "\xE9\xFC\xDF x";
    EXPECT_EQ(SourceText(text).At(4).column, 5u);
}

TEST(SourceText, LinesOfTheOldKindCountToo) {
    const SourceText source("a\rb\r\nc\nd");
    EXPECT_EQ(source.At(2).line, 2u);
    EXPECT_EQ(source.At(5).line, 3u);
    EXPECT_EQ(source.At(7).line, 4u);
}

TEST(SourceText, ExcerptOfALongLineIsCutAroundTheMark) {
    const std::string text(10'000, 'x');
    const Excerpt excerpt = SourceText(text).Around({5000, 5010});
    EXPECT_LT(excerpt.text.size(), 140u);
    EXPECT_EQ(excerpt.markWidth, 10u);
    EXPECT_EQ(excerpt.text.substr(0, 3), "...");
    EXPECT_EQ(excerpt.text.substr(excerpt.text.size() - 3), "...");
}

TEST(Comments, OnlyThoseThatTakeSomethingAwayAreTrouble) {
    EXPECT_THAT(FindCommentTrouble("A = 1 ; note\nB = \"x\" ; \"quoted\"\nC ;\n D"), IsEmpty());
    EXPECT_THAT(FindCommentTrouble("; \"one; two\"\n"), IsEmpty());
    EXPECT_EQ(FindCommentTrouble("A;x\nB").size(), 1u);
    EXPECT_EQ(FindCommentTrouble("A;x\n;y\nB").size(), 1u);
    EXPECT_THAT(FindCommentTrouble("A;x\n B"), IsEmpty());
    EXPECT_EQ(FindCommentTrouble("A = \"x; y\"\n").size(), 1u);
}

TEST(KeyTimes, NumbersAreReadInTheLanguagesForm) {
    EXPECT_DOUBLE_EQ(NumberValue(L"12.5"), 12.5);
    EXPECT_DOUBLE_EQ(NumberValue(L"-0.25"), -0.25);
    EXPECT_DOUBLE_EQ(NumberValue(L"7"), 7);
}

}  // namespace
