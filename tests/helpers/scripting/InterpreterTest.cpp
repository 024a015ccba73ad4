// The interpreter over grammars of the tests' own.

#include "helpers/scripting/Interpreter.h"

#include <gtest/gtest.h>

#include "helpers/report/CapturedOutput.h"
#include "helpers/scripting/TestLanguage.h"

namespace {

using helpers::scripting::either;
using helpers::scripting::GrammarNode;
using helpers::scripting::kAddEmpty;
using helpers::scripting::kDropFirst;
using helpers::scripting::kDropSecond;
using helpers::scripting::keyword;
using helpers::scripting::kJoin;
using helpers::scripting::symbol;
using helpers::scripting::SymbolMark;
using helpers::scripting::then;
using test_language::Strings;
using test_language::TestInterpreter;

constexpr std::uint32_t kWord = 0;  // letters, up to a blank or a mark
constexpr std::uint32_t kComma = 1;
constexpr std::uint32_t kDigit = 2;
constexpr std::uint32_t kRule = 10;

const std::string kNames =
    "helpers::scripting::Interpreter<class test_language::Preprocessor,"
    "class helpers::scripting::ScriptFile<class std::basic_string<wchar_t,"
    "struct std::char_traits<wchar_t>,class std::allocator<wchar_t> > >,"
    "class std::basic_string<wchar_t,struct std::char_traits<wchar_t>,"
    "class std::allocator<wchar_t> > >::get_expression_lexem";

std::string Line(int line) {
    return "ASSERT in file: Common/Helpers/Interpreter, line: (" + std::to_string(line) +
           ") name: " + kNames + "\n";
}

class Interpreting : public testing::Test {
protected:
    explicit Interpreting() { captured::TakeDebugged(); }

    static void Define(TestInterpreter& interpreter) {
        const std::wstring letters = L"abcdefghijklmnopqrstuvwxyzABC";
        ASSERT_TRUE(interpreter.add_lexem({kWord, letters, L" ,.0123456789"}));
        ASSERT_TRUE(interpreter.add_lexem({kComma, L",", letters + L" ,.0123456789"}));
        ASSERT_TRUE(interpreter.add_lexem({kDigit, L"0123456789", letters + L" ,.0123456789"}));
    }

    // Matches the node as a rule of its own.
    static bool Match(const char* text, const GrammarNode& node, Strings& out,
                      std::size_t* position = nullptr) {
        TestInterpreter interpreter{std::string_view(text), L" "};
        Define(interpreter);
        EXPECT_TRUE(interpreter.add_rule(kRule, node));
        const bool matched = interpreter.get_expression(kRule, out);
        if (position != nullptr) *position = interpreter.Position();
        return matched;
    }

    Strings out;
};

TEST_F(Interpreting, ALexemKindIsMatchedLikeARule) {
    TestInterpreter interpreter(std::string_view("  ab ,"), L" ");
    Define(interpreter);
    EXPECT_TRUE(interpreter.get_expression(kWord, out));
    EXPECT_EQ(out, Strings{L"ab"});
    EXPECT_EQ(interpreter.Position(), 4u);
    EXPECT_FALSE(interpreter.get_expression(kWord, out));
    EXPECT_EQ(interpreter.Position(), 4u);
    EXPECT_TRUE(out.empty());
}

TEST_F(Interpreting, SequencesDropJoinAndAddAsTheirFlagsSay) {
    EXPECT_TRUE(Match("a b.", then(kWord, kWord), out));
    EXPECT_EQ(out, (Strings{L"a", L"b"}));
    EXPECT_TRUE(Match("a b.", then(kWord, kWord, kDropFirst), out));
    EXPECT_EQ(out, (Strings{L"b"}));
    EXPECT_TRUE(Match("a b.", then(kWord, kWord, kDropSecond), out));
    EXPECT_EQ(out, (Strings{L"a"}));
    EXPECT_TRUE(Match("a b.", then(kWord, kWord, kJoin), out));
    EXPECT_EQ(out, (Strings{L"ab"}));
    EXPECT_TRUE(Match("a b.", then(kWord, kWord, kAddEmpty | kDropFirst | kDropSecond), out));
    EXPECT_EQ(out, (Strings{L""}));
    EXPECT_TRUE(Match("a b.", then(kWord, kWord, kAddEmpty | kJoin), out));
    EXPECT_EQ(out, (Strings{L"ab", L""}));
}

TEST_F(Interpreting, OnlyTheFirstPieceOfTheSecondChildIsJoined) {
    EXPECT_TRUE(Match("a b c.", then(kWord, then(kWord, kWord), kJoin), out));
    EXPECT_EQ(out, (Strings{L"ab", L"c"}));
    EXPECT_TRUE(Match("a b c.", then(kWord, then(kWord, kWord, kJoin), kJoin), out));
    EXPECT_EQ(out, (Strings{L"abc"}));
}

TEST_F(Interpreting, ChoicesStoreWhateverTheyAreTold) {
    EXPECT_TRUE(Match("a b.", then(either(kWord, kComma), kWord, kDropFirst), out));
    EXPECT_EQ(out, (Strings{L"a", L"b"}));
}

TEST_F(Interpreting, SequencesDecideForTheirOwnChildren) {
    EXPECT_TRUE(Match("a b c.", then(kWord, then(kWord, kWord), kDropSecond), out));
    EXPECT_EQ(out, (Strings{L"a", L"b", L"c"}));
}

TEST_F(Interpreting, DroppingReachesALexemThroughARule) {
    TestInterpreter interpreter(std::string_view("a b."), L" ");
    Define(interpreter);
    interpreter.add_rule(kRule, then(11, kWord, kDropFirst));
    interpreter.add_rule(11, symbol(kWord));
    EXPECT_TRUE(interpreter.get_expression(kRule, out));
    EXPECT_EQ(out, (Strings{L"b"}));
}

TEST_F(Interpreting, BothAlternativesAppend) {
    EXPECT_TRUE(Match("a,.", then(kWord, either(kDigit, kComma), kJoin), out));
    EXPECT_EQ(out, (Strings{L"a,"}));
}

TEST_F(Interpreting, WhatAFailedAlternativeAppendedStays) {
    const GrammarNode node = then(kWord, either(then(kWord, kDigit), kWord), kJoin);
    EXPECT_TRUE(Match("a b.", node, out));
    EXPECT_EQ(out, (Strings{L"abb"}));
}

TEST_F(Interpreting, ASecondAlternativeBeginsWhereTheFirstBegan) {
    EXPECT_FALSE(Match("a1.", either(then(kWord, kComma, kDropSecond), kDigit), out));
    EXPECT_TRUE(out.empty());
}

TEST_F(Interpreting, AnAlternativeMayEndInAnEmptyPieceWhereTheNextGoesOn) {
    const GrammarNode longer = then(kWord, then(kComma, kDigit));
    EXPECT_TRUE(Match("a,1.", either(then(kWord, kComma, kAddEmpty), longer), out));
    EXPECT_EQ(out, (Strings{L"a", L",", L""}));
}

TEST_F(Interpreting, FailureRestoresListAndPosition) {
    std::size_t position = 99;
    EXPECT_FALSE(Match("  a b ,", then(kWord, then(kWord, kWord)), out, &position));
    EXPECT_EQ(position, 0u);
    EXPECT_TRUE(out.empty());
}

TEST_F(Interpreting, KeywordsEqualWithoutCase) {
    for (const char* text : {"abc.", "ABC.", "aBc."}) {
        EXPECT_TRUE(Match(text, keyword(kWord, L"aBC"), out)) << text;
    }
    for (const char* text : {"ab.", "abcd.", "abd.", "ab\xE9."}) {
        EXPECT_FALSE(Match(text, keyword(kWord, L"abc"), out)) << text;
    }
}

TEST_F(Interpreting, ADifferentKeywordIsStillTheLastLexem) {
    TestInterpreter interpreter(std::string_view("abc."), L" ");
    Define(interpreter);
    interpreter.add_rule(kRule, keyword(kWord, L"x"));
    EXPECT_FALSE(interpreter.get_expression(kRule, out));
    EXPECT_EQ(interpreter.LastLexemText(), L"abc");
}

TEST_F(Interpreting, TakenNumbersAreRefused) {
    TestInterpreter interpreter(std::string_view("ab."), L" ");
    Define(interpreter);
    EXPECT_TRUE(interpreter.add_rule(kRule, symbol(kWord)));
    EXPECT_FALSE(interpreter.add_rule(kRule, symbol(kComma)));
    EXPECT_FALSE(interpreter.add_rule(kWord, symbol(kComma)));
    EXPECT_FALSE(interpreter.add_lexem({kRule, L"x", L"y"}));
    EXPECT_TRUE(interpreter.get_expression(kRule, out));
}

TEST_F(Interpreting, TheTablesGrowToTheNumberAndMarkNothingElse) {
    TestInterpreter interpreter(std::string_view("ab."), L" ");
    Define(interpreter);
    EXPECT_TRUE(interpreter.add_rule(100000, symbol(kWord)));
    EXPECT_EQ(interpreter.Tables().SymbolCount(), 100001u);
    EXPECT_EQ(interpreter.Tables().Rules().size(), 100001u);
    EXPECT_EQ(interpreter.Tables().Mark(99999), SymbolMark::kUndefined);
    EXPECT_FALSE(interpreter.get_expression(99999, out));
    EXPECT_FALSE(interpreter.get_expression(100001, out));
    EXPECT_TRUE(interpreter.get_expression(100000, out));
    EXPECT_TRUE(interpreter.add_lexem({50000, L".", L"."}));
    EXPECT_TRUE(interpreter.get_expression(50000, out));
}

TEST_F(Interpreting, RulesMayNameRulesThatComeLater) {
    TestInterpreter interpreter(std::string_view("a b,"), L" ");
    Define(interpreter);
    interpreter.add_rule(11, then(kWord, 12));
    EXPECT_FALSE(interpreter.get_expression(11, out));
    interpreter.add_rule(12, symbol(kWord));
    EXPECT_TRUE(interpreter.get_expression(11, out));
    EXPECT_EQ(out, (Strings{L"a", L"b"}));
}

TEST_F(Interpreting, ARuleThatComesToItselfFirstDoesNotMatchThere) {
    TestInterpreter interpreter(std::string_view("a b c,"), L" ");
    Define(interpreter);
    interpreter.add_rule(11, either(then(12, kWord), kWord));
    interpreter.add_rule(12, symbol(11));
    EXPECT_TRUE(interpreter.get_expression(11, out));
    EXPECT_EQ(out, (Strings{L"a"}));
    interpreter.add_rule(13, symbol(13));
    EXPECT_FALSE(interpreter.get_expression(13, out));
    EXPECT_FALSE(interpreter.find_expression(13, true));
}

TEST_F(Interpreting, AChoiceOfOneOrThreeIsReportedAndGoesOn) {
    GrammarNode one;
    one.choice = {symbol(kWord)};
    EXPECT_TRUE(Match("a.", one, out));
    EXPECT_EQ(captured::TakeDebugged(), std::vector<std::string>{Line(165)});
    EXPECT_FALSE(Match(",.", one, out));
    EXPECT_EQ(captured::TakeDebugged(), std::vector<std::string>{Line(165)});
    GrammarNode three;
    three.choice = {symbol(kDigit), symbol(kWord), symbol(kComma)};
    EXPECT_TRUE(Match("a.", three, out));
    EXPECT_FALSE(Match(",.", three, out));
    EXPECT_EQ(captured::TakeDebugged(), (std::vector<std::string>{Line(165), Line(165)}));
}

TEST_F(Interpreting, ASequenceOfOneOrThreeIsReportedAndGoesOn) {
    GrammarNode one;
    one.sequence = {symbol(kWord)};
    EXPECT_FALSE(Match("a.", one, out));
    EXPECT_EQ(captured::TakeDebugged(), std::vector<std::string>{Line(182)});
    GrammarNode three;
    three.sequence = {symbol(kWord), symbol(kWord), symbol(kComma)};
    EXPECT_TRUE(Match("a b c.", three, out));
    EXPECT_EQ(out, (Strings{L"a", L"b"}));
    EXPECT_EQ(captured::TakeDebugged(), std::vector<std::string>{Line(182)});
}

TEST_F(Interpreting, ANodeOfNothingMatchesNothingSilently) {
    EXPECT_FALSE(Match("a.", GrammarNode(), out));
    EXPECT_FALSE(Match("a.", symbol(9999), out));
    EXPECT_TRUE(captured::TakeDebugged().empty());
}

TEST_F(Interpreting, AppendingToNothingIsReportedAtEachNodeAndStoresAString) {
    const GrammarNode node = then(kComma, either(kDigit, kWord), kDropFirst | kJoin);
    EXPECT_TRUE(Match(",a.", node, out));
    EXPECT_EQ(out, (Strings{L"a"}));
    EXPECT_EQ(captured::TakeDebugged(), (std::vector<std::string>{Line(94), Line(94), Line(94)}));
}

TEST_F(Interpreting, WellFormedGrammarsReportNothing) {
    EXPECT_TRUE(Match("a,.", then(kWord, either(kDigit, kComma), kJoin), out));
    EXPECT_TRUE(captured::TakeDebugged().empty());
}

TEST_F(Interpreting, ALooseNodeAddsToTheCallersList) {
    TestInterpreter interpreter(std::string_view("a b c."), L" ");
    Define(interpreter);
    out = {L"x"};
    EXPECT_TRUE(interpreter.get_expression_lexem(symbol(kWord), out, true, true));
    EXPECT_TRUE(interpreter.get_expression_lexem(symbol(kWord), out, false, false));
    EXPECT_TRUE(interpreter.get_expression_lexem(symbol(kWord), out, true, false));
    EXPECT_EQ(out, (Strings{L"xa", L"c"}));
    EXPECT_FALSE(interpreter.get_expression_lexem(symbol(kWord), out, true, true));
    EXPECT_EQ(out, (Strings{L"xa", L"c"}));
    EXPECT_EQ(interpreter.Position(), 5u);
    EXPECT_TRUE(captured::TakeDebugged().empty());
}

TEST_F(Interpreting, AFailedLooseNodeLeavesWhatItAppended) {
    TestInterpreter interpreter(std::string_view("a b."), L" ");
    Define(interpreter);
    out = {L"x"};
    EXPECT_FALSE(
        interpreter.get_expression_lexem(then(kWord, then(kWord, kDigit)), out, true, true));
    EXPECT_EQ(out, (Strings{L"xa"}));
    EXPECT_EQ(interpreter.Position(), 0u);
}

TEST_F(Interpreting, ALooseNodeOnAnEmptyListIsReported) {
    TestInterpreter interpreter(std::string_view("a."), L" ");
    Define(interpreter);
    EXPECT_TRUE(interpreter.get_expression_lexem(symbol(kWord), out, true, true));
    EXPECT_EQ(out, (Strings{L"a"}));
    EXPECT_EQ(captured::TakeDebugged(), std::vector<std::string>{Line(94)});
}

TEST_F(Interpreting, ChangedTablesOfOneInterpreterLeaveOthersAlone) {
    TestInterpreter first(std::string_view("a."), L" ");
    TestInterpreter second(std::string_view("a."), L" ");
    Define(first);
    EXPECT_TRUE(first.get_expression(kWord, out));
    EXPECT_FALSE(second.get_expression(kWord, out));
}

}  // namespace
