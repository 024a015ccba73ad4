// Reading single lexems, with definitions of the tests' own and with those of compositions.

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <string>

#include "compositions/language/CompInterpreter.h"
#include "compositions/language/ScriptCharacters.h"
#include "helpers/scripting/TestLanguage.h"

namespace {

using compositions::CompInterpreter;
using helpers::scripting::kNoPosition;
using helpers::scripting::LexemDefinition;
using test_language::TestScript;
namespace characters = compositions::characters;

struct LexemRow {
    std::uint32_t kind;
    const char* input;
    bool read;
    const wchar_t* text;
    std::size_t position;
};

class CompositionLexem : public testing::TestWithParam<LexemRow> {};

TEST_P(CompositionLexem, IsReadAsItsDefinitionSays) {
    const LexemRow& row = GetParam();
    CompInterpreter interpreter{std::string_view(row.input)};
    std::wstring text = L"untouched";
    EXPECT_EQ(interpreter.get_lexem(row.kind, text), row.read);
    EXPECT_EQ(text, row.read ? row.text : L"untouched");
    EXPECT_EQ(interpreter.Position(), row.position);

    interpreter.SetPosition(0);
    std::wstring_view view = L"untouched";
    EXPECT_EQ(interpreter.get_lexem(row.kind, view), row.read);
    EXPECT_EQ(view, text);
    EXPECT_EQ(interpreter.Position(), row.position);
}

using namespace compositions;
INSTANTIATE_TEST_SUITE_P(
    Every, CompositionLexem,
    testing::Values(
        LexemRow{LxDigits, "12_3 4", true, L"12_3", 4}, LexemRow{LxDigits, "1.5", true, L"1", 1},
        LexemRow{LxDigits, "12\"", true, L"12", 2}, LexemRow{LxDigits, " x", false, L"", 1},
        LexemRow{LxDigits, "12a", true, L"12", 2}, LexemRow{LxMinus, "-5", true, L"-", 1},
        LexemRow{LxMinus, "- 5", true, L"- ", 2}, LexemRow{LxMinus, "-a", false, L"", kNoPosition},
        LexemRow{LxPlus, "++", true, L"+", 1}, LexemRow{LxPlus, "-", false, L"", 0},
        LexemRow{LxPoint, ".5", true, L".", 1}, LexemRow{LxPoint, ". \"", true, L". ", 2},
        LexemRow{LxPoint, ".x", false, L"", kNoPosition},
        LexemRow{LxIdent, "  Name=", true, L"Name", 6}, LexemRow{LxIdent, "_", true, L"_", 1},
        LexemRow{LxIdent, "CAM_1.", true, L"CAM_1", 5},
        LexemRow{LxIdent, "a\xE9<#/ b", true, L"a\xFFE9<#/", 5},
        LexemRow{LxIdent, "1a", false, L"", 0}, LexemRow{LxOpenBracket, "[a", true, L"[", 1},
        LexemRow{LxOpenBracket, "[[7a", true, L"[[7", 3},
        LexemRow{LxOpenBracket, "[", true, L"[", 1}, LexemRow{LxCloseBracket, "] ", true, L"]", 1},
        LexemRow{LxCloseBracket, "]", true, L"]", 1},
        LexemRow{LxCloseBracket, "]\r\n", true, L"]", 1},
        LexemRow{LxCloseBracket, "]= ", false, L"", 0},
        LexemRow{LxCloseBracket, "]] ", false, L"", 0},
        LexemRow{LxCloseBracket, "];", false, L"", 0}, LexemRow{LxQuote, "\"abc\"", true, L"\"", 1},
        LexemRow{LxStringBody, "abc\"", true, L"abc", 3},
        LexemRow{LxStringBody, "\"", false, L"", 0},
        LexemRow{LxStringBody, "  a =+_\xE9 \"", true, L"a =+_\xFFE9 ", 9},
        LexemRow{LxStringBody, "+a\"", false, L"", 0},
        LexemRow{LxStringBody, "_a\"", false, L"", 0},
        LexemRow{LxStringBody, "abc", false, L"", kNoPosition},
        LexemRow{LxEquals, "==", true, L"=", 1}, LexemRow{LxPercent, " %%", true, L"%", 2},
        LexemRow{LxComma, ",,", true, L",", 1}, LexemRow{LxColon, ":", true, L":", 1},
        LexemRow{LxOpenBrace, "{{", true, L"{", 1}, LexemRow{LxCloseBrace, "}}", true, L"}", 1},
        LexemRow{LxOpenParen, "((", true, L"(", 1}, LexemRow{LxCloseParen, "))", true, L")", 1},
        LexemRow{LxCloseParen, "(", false, L"", 0}, LexemRow{1, "1", false, L"", 0},
        LexemRow{5, "x", false, L"", 0}, LexemRow{99, "x", false, L"", 0},
        LexemRow{0xFFFFFFFF, "x", false, L"", 0}));

TEST(Lexer, QuoteBodyQuoteAreThreeLexems) {
    CompInterpreter interpreter(std::string_view("\"abc\""));
    std::wstring text;
    EXPECT_TRUE(interpreter.get_lexem(LxQuote, text));
    EXPECT_TRUE(interpreter.get_lexem(LxStringBody, text));
    EXPECT_EQ(text, L"abc");
    EXPECT_EQ(interpreter.Position(), 4u);
    EXPECT_TRUE(interpreter.get_lexem(LxQuote, text));
    EXPECT_EQ(text, L"\"");
    EXPECT_EQ(interpreter.Position(), 5u);
}

TEST(Lexer, NothingIsReadWhereOnlyBlanksAndTheZeroRemain) {
    for (std::uint32_t kind = 0; kind < 60; ++kind) {
        CompInterpreter interpreter(std::string_view("  \t\r\n"));
        std::wstring text = L"untouched";
        EXPECT_FALSE(interpreter.get_lexem(kind, text)) << kind;
        EXPECT_EQ(text, L"untouched");
    }
}

TEST(Lexer, TheLastLexemIsKeptUntilAnotherIsRead) {
    CompInterpreter interpreter(std::string_view("Name = 5"));
    EXPECT_TRUE(interpreter.LexemRead());
    EXPECT_EQ(interpreter.LastLexemText(), L"");
    std::wstring text;
    ASSERT_TRUE(interpreter.get_lexem(LxIdent, text));
    EXPECT_FALSE(interpreter.get_lexem(LxDigits, text));
    EXPECT_EQ(interpreter.LastLexemKind(), LxIdent);
    EXPECT_EQ(interpreter.LastLexemText(), L"Name");
    EXPECT_TRUE(interpreter.LexemRead());
}

TEST(Lexer, NoPositionFailsUntilThePositionIsSet) {
    CompInterpreter interpreter(std::string_view("-x 5"));
    std::wstring text;
    interpreter.SetPosition(3);
    ASSERT_TRUE(interpreter.get_lexem(LxDigits, text));
    interpreter.SetPosition(kNoPosition);
    EXPECT_FALSE(interpreter.get_lexem(LxDigits, text));
    EXPECT_FALSE(interpreter.find_expression(LxDigits, false));
    EXPECT_EQ(interpreter.Position(), kNoPosition);
    interpreter.SetPosition(0);
    EXPECT_TRUE(interpreter.find_expression(LxDigits, false));
}

TEST(Lexer, PositionsBehindTheEndReadNothing) {
    CompInterpreter interpreter(std::string_view("abc"));
    std::wstring text;
    std::vector<std::wstring> pieces;
    for (const std::size_t position : {std::size_t{5}, std::size_t{6}, std::size_t{1} << 40}) {
        interpreter.SetPosition(position);
        EXPECT_FALSE(interpreter.get_lexem(LxIdent, text));
        EXPECT_FALSE(interpreter.get_expression(LxIdent, pieces));
        EXPECT_FALSE(interpreter.find_expression(LxIdent, true));
        EXPECT_EQ(interpreter.Position(), position);
    }
}

// Every combination of what is kept and consumed, of "<ab>c" cut from "<" to ">".
struct Flags {
    bool keepFirst, keepStop, skipStop;
    const wchar_t* text;
    std::size_t position;
};

class LexemFlags : public testing::TestWithParam<Flags> {};

TEST_P(LexemFlags, DecideTextAndPosition) {
    const Flags& flags = GetParam();
    TestScript script(std::string_view(" <ab>cde"), L" ");
    ASSERT_TRUE(script.add_lexem({5, L"<", L">", flags.keepFirst, flags.keepStop, flags.skipStop}));
    std::wstring text;
    ASSERT_TRUE(script.get_lexem(5, text));
    EXPECT_EQ(text, flags.text);
    EXPECT_EQ(script.Position(), flags.position);
}

INSTANTIATE_TEST_SUITE_P(
    Every, LexemFlags,
    testing::Values(Flags{true, false, false, L"<ab", 4}, Flags{true, false, true, L"<ab", 5},
                    Flags{true, true, false, L"<ab>", 6}, Flags{true, true, true, L"<ab>", 6},
                    Flags{false, false, false, L"ab", 3}, Flags{false, false, true, L"ab", 4},
                    Flags{false, true, false, L"ab>", 5}, Flags{false, true, true, L"ab>", 5}));

TEST(Lexer, ALexemIsAtLeastOneCharacterLong) {
    TestScript script(std::string_view("<x"), L" ");
    ASSERT_TRUE(script.add_lexem({1, L"<", L"<", false}));
    std::wstring text;
    ASSERT_TRUE(script.get_lexem(1, text));
    EXPECT_EQ(text, L"x");
    EXPECT_EQ(script.Position(), 1u);
}

TEST(Lexer, AnEmptyDroppedLexemAtTheEndStaysInsideTheText) {
    TestScript script(std::string_view("<"), L" ");
    ASSERT_TRUE(script.add_lexem({1, L"<", L"<", false, true, true}));
    std::wstring text = L"x";
    ASSERT_TRUE(script.get_lexem(1, text));
    EXPECT_EQ(text, L"");
    EXPECT_EQ(script.Position(), 2u);
    EXPECT_FALSE(script.get_lexem(1, text));
}

TEST(Lexer, AStopSetOfTheBlanksInAnotherOrderStillMeansOneCharacter) {
    TestScript script(std::string_view("]a ] "), L" \n");
    ASSERT_TRUE(script.add_lexem({1, L"]", L"\n  "}));
    std::wstring text;
    EXPECT_FALSE(script.get_lexem(1, text));
    EXPECT_EQ(script.Position(), 0u);
    script.SetPosition(2);
    EXPECT_TRUE(script.get_lexem(1, text));
    EXPECT_EQ(text, L"]");
    EXPECT_EQ(script.Position(), 4u);
}

TEST(Lexer, CharactersAboveALatinByteWork) {
    TestScript script(std::string_view("a"), L" ");
    ASSERT_TRUE(script.add_lexem({1, L"\xFFE9\x0416", L"\x0416 "}));
    std::wstring text;
    EXPECT_FALSE(script.get_lexem(1, text));
    CompInterpreter other(std::string_view("\xE9x \xFF "));
    ASSERT_TRUE(other.add_lexem({100, L"\xFFE9\xFFFF", L" "}));
    EXPECT_TRUE(other.get_lexem(100, text));
    EXPECT_EQ(text, L"\xFFE9x");
    EXPECT_TRUE(other.get_lexem(100, text));
    EXPECT_EQ(text, L"\xFFFF");
}

TEST(Lexer, MoreSetsThanFitOneTableWork) {
    std::string bytes;
    TestScript script(std::string_view("z"), L" ");
    for (std::uint32_t kind = 0; kind < 200; ++kind) {
        const auto start = static_cast<wchar_t>(0x30 + kind);
        ASSERT_TRUE(script.add_lexem({kind, std::wstring(1, start), L"z"}));
    }
    std::wstring text;
    for (std::uint32_t kind = 0; kind < 200; ++kind) {
        EXPECT_EQ(script.get_lexem(kind, text), kind == 'z' - 0x30u) << kind;
        script.SetPosition(0);
    }
}

TEST(Lexer, ATakenNumberIsRefusedAndChangesNothing) {
    TestScript script(std::string_view("ab,"), L" ");
    EXPECT_TRUE(script.add_lexem({7, L"a", L","}));
    EXPECT_FALSE(script.add_lexem({7, L"x", L"y"}));
    EXPECT_FALSE(script.add_lexem({0xFFFFFFFF, L"x", L"y"}));
    std::wstring text;
    EXPECT_TRUE(script.get_lexem(7, text));
    EXPECT_EQ(text, L"ab");
    EXPECT_EQ(script.Tables().SymbolCount(), 8u);
}

// The tables are written here a second time: whoever changes one changes what a valid script is.
TEST(Characters, LexemsBeginAndEndWithThePublishedOnes) {
    const std::wstring blanks = L" \n\t\r";
    const std::wstring digits = L"0123456789";
    const std::wstring letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const std::wstring marks = L";[]=\":\\.(){},-+%";
    const std::wstring any = blanks + letters + marks + digits;
    const std::wstring stringStart = letters + blanks + digits + L";[]=:\\.(){},-%";
    ASSERT_EQ(any.size(), 82u);
    ASSERT_EQ(stringStart.size(), 80u);
    const LexemDefinition published[] = {{0, digits, letters + blanks + marks},
                                         {2, L"-", digits},
                                         {3, L"+", any},
                                         {4, L".", digits + L"\""},
                                         {6, letters + L"_", marks + blanks},
                                         {7, L"\"", any},
                                         {13, L"[", letters + blanks},
                                         {14, L"]", blanks},
                                         {15, stringStart, L"\""},
                                         {18, L"=", any},
                                         {19, L"%", any},
                                         {22, L",", any},
                                         {23, L":", any},
                                         {24, L"{", any},
                                         {25, L"}", any},
                                         {40, L"(", any},
                                         {41, L")", any}};
    const CompInterpreter interpreter(std::string_view(" "));
    EXPECT_EQ(interpreter.Blanks(), blanks);
    const auto& lexems = interpreter.Tables().Lexems();
    EXPECT_EQ(lexems.size(), std::size(published));
    for (const LexemDefinition& expected : published) {
        SCOPED_TRACE(expected.kind);
        const auto found = lexems.find(expected.kind);
        ASSERT_NE(found, lexems.end());
        EXPECT_EQ(found->second.kind, expected.kind);
        EXPECT_EQ(found->second.start_set, expected.start_set);
        EXPECT_EQ(found->second.stop_set, expected.stop_set);
        EXPECT_TRUE(found->second.keep_first);
        EXPECT_FALSE(found->second.keep_stop);
        EXPECT_FALSE(found->second.skip_stop);
    }
}

TEST(Characters, NoByteAbove127IsInAClass) {
    for (const std::wstring_view set : {characters::kIdentStart, characters::kAnyScriptChar,
                                        characters::kStringStart, characters::kAfterNumber}) {
        for (unsigned code = 0x80; code < 0x100; ++code) {
            EXPECT_EQ(set.find(static_cast<wchar_t>(code)), set.npos);
            EXPECT_EQ(set.find(static_cast<wchar_t>(0xFF00 + code)), set.npos);
        }
    }
}

}  // namespace
