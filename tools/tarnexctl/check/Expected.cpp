#include "check/Expected.h"

#include <algorithm>

#include "compositions/language/Symbols.h"

namespace tarnexctl {
namespace {

const char* LexemWords(std::uint32_t kind) {
    using namespace compositions;
    switch (kind) {
        case LxDigits:
        case LxMinus:
            return "a number";
        case LxPlus:
            return "\"+\"";
        case LxPoint:
            return "\".\"";
        case LxIdent:
            return "a name";
        case LxQuote:
            return "a text in quotes";
        case LxStringBody:
            return "a text that starts with a letter, a digit or one of []=:\\.(){},-%";
        case LxEquals:
            return "\"=\"";
        case LxPercent:
            return "\"%\"";
        case LxComma:
            return "\",\"";
        case LxColon:
            return "\":\"";
        case LxOpenBrace:
            return "\"{\"";
        case LxCloseBrace:
            return "\"}\"";
        case LxOpenParen:
            return "\"(\"";
        case LxCloseParen:
            return "\")\"";
        default:
            return "something else";
    }
}

}  // namespace

std::vector<std::string> StatementForms(Section section) {
    switch (section) {
        case Section::kSetup:
            return {"NAME = \"text\"",
                    "CATEGORY = \"text\"",
                    "SPEED = number",
                    "SWAP = TRUE",
                    "IS_FILTER = TRUE or FALSE",
                    "%name% = REGS : {\"text\", \"text\"}",
                    "a header"};
        case Section::kSources:
            return {"name = INPUT", "name = number", "name = BITMAP : path", "name = MOVIE : path",
                    "a header"};
        case Section::kEffects:
            return {"name = \"effect\"", "name = MIX", "a header"};
        case Section::kStructure:
            return {"a name", "\",\"", "\"(\"", "\")\"", "a header"};
        case Section::kProperties:
            return {"READ WRITE \"name\" = value", "a header"};
        case Section::kMapping:
            return {"READ WRITE \"name\" = effect.\"property\"", "a header"};
        case Section::kEnvelopes:
            return {"name = {number}, {time, value, KIND}, {time, KIND}", "a header"};
        case Section::kTimeline:
            return {"effect.\"property\" = value", "a header"};
    }
    return {};
}

std::vector<std::string> ExpectedWords(const FurthestMatch& furthest) {
    using namespace compositions;
    // Within a number a fraction could follow, after a quote the other one: nobody means those.
    const bool afterNumber = furthest.Expects(LxPoint) && furthest.expected.size() > 1;
    const bool afterQuote = furthest.Expects(LxStringBody);
    std::vector<std::string> words;
    for (const ExpectedLexem& lexem : furthest.expected) {
        if (lexem.keyword.empty() &&
            ((lexem.kind == LxPoint && afterNumber) || (lexem.kind == LxQuote && afterQuote))) {
            continue;
        }
        const std::string word = lexem.keyword.empty()
                                     ? LexemWords(lexem.kind)
                                     : std::string(lexem.keyword.begin(), lexem.keyword.end());
        if (std::find(words.begin(), words.end(), word) == words.end()) words.push_back(word);
    }
    return words;
}

std::vector<std::wstring_view> ExpectedKeywords(const FurthestMatch& furthest) {
    std::vector<std::wstring_view> keywords;
    for (const ExpectedLexem& lexem : furthest.expected) {
        if (!lexem.keyword.empty()) keywords.push_back(lexem.keyword);
    }
    return keywords;
}

}  // namespace tarnexctl
