#include "compositions/language/CompLanguage.h"

#include "compositions/language/ScriptCharacters.h"
#include "compositions/language/Symbols.h"

namespace compositions {
namespace {

using helpers::scripting::either;
using helpers::scripting::Grammar;
using helpers::scripting::GrammarNode;
using helpers::scripting::kAddEmpty;
using helpers::scripting::kDropFirst;
using helpers::scripting::kDropSecond;
using helpers::scripting::keyword;
using helpers::scripting::kJoin;
using helpers::scripting::Language;
using helpers::scripting::then;

void AddLexems(Grammar& grammar) {
    using namespace characters;
    const auto add = [&](std::uint32_t kind, std::wstring_view start, std::wstring_view stop) {
        grammar.add_lexem(
            {.kind = kind, .start_set = std::wstring(start), .stop_set = std::wstring(stop)});
    };
    add(LxDigits, kDigits, kAfterNumber);
    add(LxMinus, L"-", kDigits);
    add(LxPlus, L"+", kAnyScriptChar);
    add(LxPoint, L".", kDigitsQuote);
    add(LxIdent, kIdentStart, kAfterIdent);
    add(LxOpenBracket, L"[", kAfterOpenBracket);
    add(LxCloseBracket, L"]", kBlanks);
    add(LxQuote, kQuote, kAnyScriptChar);
    add(LxStringBody, kStringStart, kQuote);
    add(LxEquals, L"=", kAnyScriptChar);
    add(LxPercent, L"%", kAnyScriptChar);
    add(LxComma, L",", kAnyScriptChar);
    add(LxColon, L":", kAnyScriptChar);
    add(LxOpenBrace, L"{", kAnyScriptChar);
    add(LxCloseBrace, L"}", kAnyScriptChar);
    add(LxOpenParen, L"(", kAnyScriptChar);
    add(LxCloseParen, L")", kAnyScriptChar);
}

GrammarNode Word(const wchar_t* text) {
    return keyword(LxIdent, text);
}

// A mark between or before pieces, which leaves no piece itself.
GrammarNode After(std::uint32_t mark, GrammarNode node) {
    return then(mark, std::move(node), kDropFirst);
}

GrammarNode Before(GrammarNode node, std::uint32_t mark) {
    return then(std::move(node), mark, kDropSecond);
}

// The word between square brackets; leaves nothing.
GrammarNode Header(const wchar_t* word) {
    return then(LxOpenBracket, then(Word(word), LxCloseBracket, kDropFirst | kDropSecond),
                kDropFirst);
}

GrammarNode Assign(GrammarNode name, GrammarNode value) {
    return then(std::move(name), After(LxEquals, std::move(value)));
}

// name = WORD : path
GrammarNode Media(const wchar_t* word) {
    return Assign(LxIdent, then(Word(word), After(LxColon, R11), kDropFirst));
}

GrammarNode InBraces(GrammarNode content) {
    return After(LxOpenBrace, Before(std::move(content), LxCloseBrace));
}

// first , second
GrammarNode List(GrammarNode first, GrammarNode second) {
    return then(std::move(first), After(LxComma, std::move(second)));
}

// REGS : { strings }
GrammarNode Registers(GrammarNode strings) {
    return then(Word(L"REGS"), After(LxColon, InBraces(std::move(strings))));
}

// A key's kind: a word, or a word and two numbers.
GrammarNode KindWithNumbers() {
    return List(LxIdent, List(R5, R5));
}

// A whole key in each of its forms: a later part that does not fit brings the next form. Forms with
// an integer for the time, which come before those with a number, would match nothing else.
GrammarNode Key(bool withValue) {
    const auto form = [&](GrammarNode kind) {
        if (withValue) kind = List(R5, std::move(kind));
        return InBraces(List(R5, std::move(kind)));
    };
    return either(form(LxIdent), form(KindWithNumbers()));
}

// clang-format off
void AddRules(Grammar& grammar) {
    const auto add = [&](std::uint32_t number, const GrammarNode& node) { grammar.add_rule(number, node); };
    add(R1, either(then(LxMinus, LxDigits, kJoin), LxDigits));
    add(R5, either(then(R1, then(LxPoint, LxDigits, kJoin), kJoin), R1));
    add(R12, After(LxOpenBracket, Before(LxIdent, LxCloseBracket)));
    add(R8, either(After(LxQuote, Before(LxStringBody, LxQuote)), then(LxQuote, LxQuote, kDropFirst | kDropSecond | kAddEmpty)));
    add(R9, either(then(LxQuote, then(LxStringBody, LxQuote, kJoin), kJoin), then(LxQuote, LxQuote, kJoin | kAddEmpty)));
    add(R16, Assign(LxIdent, R8));
    add(R17, Assign(LxIdent, LxIdent));
    add(R57, Assign(LxIdent, R1));
    add(R20, After(LxPercent, Before(LxIdent, LxPercent)));
    add(R27, either(Registers(List(R8, R8)), Registers(List(R8, List(R8, R8)))));
    add(R28, Assign(R20, either(R8, R27)));
    add(R26, Header(L"SETUP"));
    add(R31, either(R9, either(R5, either(R1, either(Word(L"TRUE"), Word(L"FALSE"))))));
    add(R30, Assign(R43, R31));
    add(R29, Header(L"PROPERTIES"));
    add(R32, Header(L"SOURCES"));
    add(R33, then(LxIdent, then(LxEquals, Word(L"INPUT"), kDropFirst | kDropSecond)));
    add(R10, either(R8, R20));
    add(R11, either(then(R10, After(LxPlus, R11)), R10));
    add(R34, Media(L"BITMAP"));
    add(R35, Media(L"MOVIE"));
    add(R36, Header(L"EFFECTS"));
    add(R37, Assign(LxIdent, either(Word(L"MIX"), R8)));
    add(R39, then(Word(L"OUTPUT"), LxEquals, kDropFirst | kDropSecond));
    add(R38, Header(L"STRUCTURE"));
    add(R43, either(R8, then(LxIdent, R43)));
    add(R44, then(LxIdent, After(LxPoint, R8)));
    add(R45, either(List(R44, R45), R44));
    add(R46, Assign(R43, R45));
    add(R42, Header(L"MAPPING"));
    add(R47, Header(L"ENVELOPES"));
    add(R48, either(InBraces(R1), InBraces(R5)));
    add(R49, Key(true));
    add(R50, Key(false));
    add(R51, either(R50, List(R49, R51)));
    add(R52, Assign(LxIdent, List(R48, R51)));
    add(R53, Header(L"TIMELINE"));
    add(R54, either(Before(R44, LxEquals), List(R44, R54)));
    add(R55, then(R54, either(R5, either(R8, either(R20, LxIdent)))));
    add(R56, Assign(LxIdent, R1));
}
// clang-format on

std::shared_ptr<const Language> Build() {
    Grammar grammar;
    AddLexems(grammar);
    AddRules(grammar);
    return std::make_shared<const Language>(std::move(grammar), std::wstring(characters::kBlanks));
}

}  // namespace

const std::shared_ptr<const Language>& CompositionLanguage() {
    static const std::shared_ptr<const Language> language = Build();
    return language;
}

}  // namespace compositions
