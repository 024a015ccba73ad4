// The composition grammar: a row or more per rule, in the table's order.

#include <gtest/gtest.h>

#include "compositions/language/CompInterpreter.h"

namespace {

using namespace compositions;
using Strings = std::vector<std::wstring>;

struct Row {
    std::uint32_t rule;
    const char* input;
    Strings pieces;
    const char* unread;  // what the match leaves, the end's blank and zero aside
};

class GrammarRow : public testing::TestWithParam<Row> {};

TEST_P(GrammarRow, GivesItsPiecesAndLeavesTheRest) {
    const Row& row = GetParam();
    const std::string_view input = row.input;
    CompInterpreter interpreter(input);
    Strings pieces;
    ASSERT_TRUE(interpreter.get_expression(row.rule, pieces)) << row.input;
    EXPECT_EQ(pieces, row.pieces) << row.input;
    EXPECT_EQ(input.substr(interpreter.Position()), row.unread);
}

INSTANTIATE_TEST_SUITE_P(
    Matches, GrammarRow,
    testing::Values(
        Row{R1, "-12 x", {L"-12"}, " x"}, Row{R1, " 7,", {L"7"}, ","},
        Row{R1, "- 12", {L"- 12"}, ""}, Row{R5, "-3.25", {L"-3.25"}, ""},
        Row{R5, "-12.5", {L"-12.5"}, ""}, Row{R5, "7", {L"7"}, ""}, Row{R5, "1 . 5", {L"1. 5"}, ""},
        Row{R5, "1.x 2", {L"1.x 2"}, ""}, Row{R12, "[ a1 ] x", {L"a1"}, " x"},
        Row{R8, "\"a b\"c", {L"a b"}, "c"}, Row{R8, "\"\"x", {L""}, "x"},
        Row{R8, "\"  \"", {L""}, ""}, Row{R9, "\"ab\"", {L"\"ab\""}, ""},
        Row{R9, "\"\"", {L"\"\"", L""}, ""}, Row{R9, "\"  ab\"", {L"\"ab\""}, ""},
        Row{R16, "Name = \"  Blur\"", {L"Name", L"Blur"}, ""},
        Row{R17, "SWAP=TRUE x", {L"SWAP", L"TRUE"}, " x"},
        Row{R57, "SPEED = -2", {L"SPEED", L"-2"}, ""}, Row{R20, "% Path %+", {L"Path"}, "+"},
        Row{R27, "regs:{\"a\",\"b\"}", {L"regs", L"a", L"b"}, ""},
        Row{R27, "REGS : { \"a\" , \"\" , \"c\" } x", {L"REGS", L"a", L"", L"c"}, " x"},
        Row{R28, "%v% = \"s\"", {L"v", L"s"}, ""},
        Row{R28, "%v%=REGS:{\"a\",\"b\"}", {L"v", L"REGS", L"a", L"b"}, ""},
        Row{R26, "[SETUP] x", {}, " x"}, Row{R26, "[ setup\t]\n", {}, "\n"},
        Row{R31, "\"\"", {L"\"\"", L""}, ""}, Row{R31, "\"x\"", {L"\"x\""}, ""},
        Row{R31, "1.5", {L"1.5"}, ""}, Row{R31, "-4", {L"-4"}, ""}, Row{R31, "true", {L"true"}, ""},
        Row{R31, "False", {L"False"}, ""},
        Row{R30, "READ write \"P\" = 1.5", {L"READ", L"write", L"P", L"1.5"}, ""},
        Row{R30, "\"P\"=\"\"", {L"P", L"\"\"", L""}, ""}, Row{R29, "[Properties] ", {}, " "},
        Row{R32, "[SOURCES] ", {}, " "}, Row{R33, "SRC = input", {L"SRC"}, ""},
        Row{R10, "\"a\"", {L"a"}, ""}, Row{R10, "%a%", {L"a"}, ""},
        Row{R11, "%a% + \"b\" + \"c\"", {L"a", L"b", L"c"}, ""}, Row{R11, "%a%+-", {L"a"}, "+-"},
        Row{R34, "L = BITMAP : \"l.png\"", {L"L", L"l.png"}, ""},
        Row{R34, "L=bitmap:%p%+\"l\"", {L"L", L"p", L"l"}, ""},
        Row{R35, "M = Movie:\"m\"", {L"M", L"m"}, ""}, Row{R36, "[EFFECTS] ", {}, " "},
        Row{R37, "M1 = Mix", {L"M1", L"Mix"}, ""}, Row{R37, "B = \"Blur\"", {L"B", L"Blur"}, ""},
        Row{R39, "output = x", {}, " x"}, Row{R38, "[STRUCTURE] ", {}, " "},
        Row{R43, "\"s\"", {L"s"}, ""}, Row{R43, "a b \"s\"", {L"a", L"b", L"s"}, ""},
        Row{R44, "b.\"Radius\"", {L"b", L"Radius"}, ""},
        Row{R44, "b .x\"Radius\"", {L"b", L"Radius"}, ""},
        Row{R45, "a.\"x\" , b.\"y\"", {L"a", L"x", L"b", L"y"}, ""},
        Row{R45, "a.\"x\", b", {L"a", L"x"}, ", b"},
        Row{R46, "READ \"P\"=a.\"x\",b.\"y\"", {L"READ", L"P", L"a", L"x", L"b", L"y"}, ""},
        Row{R42, "[MAPPING] ", {}, " "}, Row{R47, "[ENVELOPES] ", {}, " "},
        Row{R48, "{ 2 }", {L"2"}, ""}, Row{R48, "{2.5}", {L"2.5"}, ""},
        Row{R49, "{0, 1, LINEAR}", {L"0", L"1", L"LINEAR"}, ""},
        Row{R49, "{1.5,-0.5,x}", {L"1.5", L"-0.5", L"x"}, ""},
        Row{R49, "{0,1,HERMITE,2,3.5}", {L"0", L"1", L"HERMITE", L"2", L"3.5"}, ""},
        Row{R49, "{1.5,1,HERMITE,2,3}", {L"1.5", L"1", L"HERMITE", L"2", L"3"}, ""},
        Row{R50, "{25,HOLD}", {L"25", L"HOLD"}, ""}, Row{R50, "{2.5,HOLD}", {L"2.5", L"HOLD"}, ""},
        Row{R50, "{2,h,1,2}", {L"2", L"h", L"1", L"2"}, ""},
        Row{R50, "{2.5,h,1,2}", {L"2.5", L"h", L"1", L"2"}, ""},
        Row{R51, "{1,a}", {L"1", L"a"}, ""},
        Row{R51,
            "{0,1,a},{2,3,b,4,5},{6,c}",
            {L"0", L"1", L"a", L"2", L"3", L"b", L"4", L"5", L"6", L"c"},
            ""},
        Row{R51, "{0,a},{1,b}", {L"0", L"a"}, ",{1,b}"},
        Row{R52,
            "FADE = {2}, {0, 0, LINEAR}, {25, HOLD}",
            {L"FADE", L"2", L"0", L"0", L"LINEAR", L"25", L"HOLD"},
            ""},
        Row{R53, "[TIMELINE] ", {}, " "}, Row{R54, "a.\"x\"=1", {L"a", L"x"}, "1"},
        Row{R54, "a.\"x\",b.\"y\"=", {L"a", L"x", L"b", L"y"}, ""},
        Row{R55, "a.\"x\"=1.5", {L"a", L"x", L"1.5"}, ""},
        Row{R55, "a.\"x\"=\"s\"", {L"a", L"x", L"s"}, ""},
        Row{R55, "a.\"x\"=%v%", {L"a", L"x", L"v"}, ""},
        Row{R55, "a.\"x\",b.\"y\"=FADE", {L"a", L"x", L"b", L"y", L"FADE"}, ""},
        Row{R56, "CAM = 2", {L"CAM", L"2"}, ""}));

void PrintTo(const Row& row, std::ostream* out) {
    *out << "rule " << row.rule << ": " << row.input;
}

struct Refused {
    std::uint32_t rule;
    const char* input;
};

void PrintTo(const Refused& row, std::ostream* out) {
    *out << "rule " << row.rule << ": " << row.input;
}

class GrammarRefusal : public testing::TestWithParam<Refused> {};

TEST_P(GrammarRefusal, LeavesListEmptyAndPosition) {
    CompInterpreter interpreter(" " + std::string(GetParam().input));
    Strings pieces{L"from before"};
    EXPECT_FALSE(interpreter.get_expression(GetParam().rule, pieces));
    EXPECT_TRUE(pieces.empty());
    EXPECT_EQ(interpreter.Position(), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Mismatches, GrammarRefusal,
    testing::Values(Refused{R1, "+7"}, Refused{R5, "+7"}, Refused{R1, "-x"}, Refused{R12, "[a]="},
                    Refused{R8, "\"abc"}, Refused{R8, "\"_a\""}, Refused{R8, "\"+a\""},
                    Refused{R9, "\""}, Refused{R16, "a = b"}, Refused{R17, "a = 5"},
                    Refused{R57, "a = b"}, Refused{R20, "%a"}, Refused{R27, "REGS:{\"a\"}"},
                    Refused{R27, "REGS:{\"a\",\"b\",\"c\",\"d\"}"}, Refused{R28, "%a%=5"},
                    Refused{R26, "[SETUP]="}, Refused{R26, "[SETUPS] "}, Refused{R31, "maybe"},
                    Refused{R30, "a b = 5"}, Refused{R33, "a = INPUTS"}, Refused{R11, "+"},
                    Refused{R34, "a = MOVIE:\"m\""}, Refused{R35, "a = BITMAP:\"m\""},
                    Refused{R37, "a = MAX"}, Refused{R39, "OUTPUT"}, Refused{R43, "a b"},
                    Refused{R44, "a.b"}, Refused{R45, ","}, Refused{R46, "\"p\"="},
                    Refused{R48, "{x}"}, Refused{R49, "{1,2}"}, Refused{R49, "{1,2,3}"},
                    Refused{R50, "{1,2}"}, Refused{R50, "{1,a,2}"}, Refused{R51, "{1,2,a}"},
                    Refused{R52, "a={1}"}, Refused{R54, "a.\"x\""}, Refused{R55, "a.\"x\"="},
                    Refused{R56, "a=+1"}, Refused{2000, "x"}, Refused{12345678, "x"}));

TEST(Grammar, HasTheFortyRulesAndSeventeenLexems) {
    CompInterpreter interpreter(std::string_view(" "));
    std::size_t rules = 0;
    std::size_t lexems = 0;
    for (std::uint32_t symbol = 0; symbol < 100; ++symbol) {
        const auto mark = interpreter.Tables().Mark(symbol);
        rules += mark == helpers::scripting::SymbolMark::kRule ? 1 : 0;
        lexems += mark == helpers::scripting::SymbolMark::kLexem ? 1 : 0;
    }
    EXPECT_EQ(rules, 40u);
    EXPECT_EQ(lexems, 17u);
    EXPECT_EQ(interpreter.Tables().SymbolCount(), 58u);
}

TEST(Grammar, AHeaderIsFoundWhereverItsCharactersStand) {
    for (const char* text : {"x [SETUP] ", "a = \"[setup] \"", "word[SetUp]\n"}) {
        CompInterpreter interpreter{std::string_view(text)};
        EXPECT_TRUE(interpreter.find_expression(R26, false)) << text;
    }
}

TEST(Grammar, AMissingHeaderLeavesThePosition) {
    CompInterpreter interpreter(std::string_view("[SETUP] [SOURCE] [SOURCES]="));
    interpreter.SetPosition(3);
    EXPECT_FALSE(interpreter.find_expression(R32, false));
    EXPECT_EQ(interpreter.Position(), 3u);
    EXPECT_FALSE(interpreter.find_expression(R26, true));
    EXPECT_EQ(interpreter.Position(), 3u);
}

TEST(Grammar, PeekingGoesBackToTheBlanksBeforeTheMatch) {
    CompInterpreter interpreter(std::string_view("ab \t [SETUP] "));
    EXPECT_TRUE(interpreter.find_expression(R26, true));
    EXPECT_EQ(interpreter.Position(), 2u);
    EXPECT_TRUE(interpreter.find_expression(R26, false));
    EXPECT_EQ(interpreter.Position(), 12u);
    interpreter.SetPosition(4);
    EXPECT_TRUE(interpreter.find_expression(R26, true));
    EXPECT_EQ(interpreter.Position(), 4u);
}

TEST(Grammar, AWordKeepsItsWrittenCase) {
    CompInterpreter interpreter(std::string_view("m = mIx"));
    Strings pieces;
    ASSERT_TRUE(interpreter.get_expression(R37, pieces));
    EXPECT_EQ(pieces, (Strings{L"m", L"mIx"}));
}

TEST(Grammar, AWordWithAZeroInItIsNoKeyword) {
    CompInterpreter interpreter(std::string_view("m = MIX\0 ", 9));
    Strings pieces;
    EXPECT_FALSE(interpreter.get_expression(R37, pieces));
    EXPECT_TRUE(interpreter.get_expression(R17, pieces));
    EXPECT_EQ(pieces[1], std::wstring(L"MIX\0", 4));
}

TEST(Grammar, PiecesAsViewsEqualPiecesAsStrings) {
    CompInterpreter interpreter(std::string_view("E={2},{1 . 5,- 2,x},{3,y}"));
    helpers::scripting::Pieces views;
    Strings pieces;
    ASSERT_TRUE(interpreter.get_expression(R52, views));
    interpreter.SetPosition(0);
    ASSERT_TRUE(interpreter.get_expression(R52, pieces));
    EXPECT_EQ(Strings(views.begin(), views.end()), pieces);
    EXPECT_EQ(pieces[2], L"1. 5");
}

}  // namespace
