#include "helpers/scripting/PlainInterpreter.h"

#include <algorithm>

namespace plain {
namespace {

using helpers::scripting::GrammarNode;
using helpers::scripting::LexemDefinition;
using helpers::scripting::SymbolMark;

bool Contains(const std::wstring& set, wchar_t character) {
    return set.find(character) != std::wstring::npos;
}

bool SameSet(const std::wstring& one, const std::wstring& other) {
    return std::all_of(one.begin(), one.end(), [&](wchar_t c) { return Contains(other, c); }) &&
           std::all_of(other.begin(), other.end(), [&](wchar_t c) { return Contains(one, c); });
}

std::wstring Upper(std::wstring text) {
    for (wchar_t& character : text) {
        if (character >= L'a' && character <= L'z') character += L'A' - L'a';
    }
    return text;
}

bool EqualsKeyword(const std::wstring& lexem, const std::wstring& keyword) {
    return !Contains(lexem, L'\0') && Upper(lexem) == Upper(keyword);
}

}  // namespace

std::wstring Preprocess(std::string_view bytes) {
    std::wstring text;
    bool inComment = false;
    for (const char byte : std::string(bytes) + ' ') {
        if (inComment) {
            if (byte == '\n') inComment = false;
        } else if (byte == ';') {
            inComment = true;
        } else {
            const unsigned code = static_cast<unsigned char>(byte);
            text += static_cast<wchar_t>(code < 0x80 ? code : 0xFF00 + code);
        }
    }
    text += L'\0';
    return text;
}

void Interpreter::TakeText(std::wstring text) {
    text_ = std::move(text);
    position = 0;
    lastKind = 0;
    lastText.clear();
    reportedLines.clear();
    steps = 0;
}

bool Interpreter::get_lexem(std::uint32_t kind, std::wstring& text) {
    const auto found = grammar_.Lexems().find(kind);
    if (found == grammar_.Lexems().end()) return false;
    const LexemDefinition& definition = found->second;
    if (position >= text_.size()) return false;
    const std::size_t begin = text_.find_first_not_of(blanks_, position);
    if (begin == std::wstring::npos) return false;
    position = begin;
    if (!Contains(definition.start_set, text_[begin])) return false;
    std::size_t stop = 0;
    if (SameSet(definition.stop_set, blanks_)) {
        stop = begin + 1;
        if (stop >= text_.size() || !Contains(blanks_, text_[stop])) return false;
    } else {
        stop = text_.find_first_of(definition.stop_set, begin);
        if (stop == std::wstring::npos) {
            position = kNoPosition;
            return false;
        }
    }
    const auto first = static_cast<std::ptrdiff_t>(begin) + (definition.keep_first ? 0 : 1);
    const auto last = static_cast<std::ptrdiff_t>(stop) - (definition.keep_stop ? 0 : 1);
    const std::ptrdiff_t length = std::max<std::ptrdiff_t>(last - first + 1, 1);
    text = text_.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(length));
    position = begin + static_cast<std::size_t>(length);
    if (definition.keep_stop || definition.skip_stop) ++position;
    lastKind = kind;
    lastText = text;
    return true;
}

bool Interpreter::get_expression(std::uint32_t rule, std::vector<std::wstring>& out) {
    out.clear();
    return get_expression_lexem(GrammarNode(rule), out, true, false);
}

bool Interpreter::find_expression(std::uint32_t rule, bool peek) {
    const std::size_t start = position;
    if (start >= text_.size()) return false;
    for (;;) {
        const std::size_t begin = position;
        std::vector<std::wstring> scratch;
        if (get_expression(rule, scratch)) {
            if (peek) position = begin;
            return true;
        }
        position = begin + 1;
        if (position >= text_.size()) {
            position = start;
            return false;
        }
    }
}

bool Interpreter::get_expression_lexem(const GrammarNode& node, std::vector<std::wstring>& out,
                                       bool store, bool append) {
    ++steps;
    if (append && out.empty()) reportedLines.push_back(94);
    const std::size_t savedPosition = position;
    const std::size_t savedSize = out.size();
    if (MatchNode(node, out, store, append)) return true;
    position = savedPosition;
    out.resize(savedSize);
    return false;
}

bool Interpreter::MatchNode(const GrammarNode& node, std::vector<std::wstring>& out, bool store,
                            bool append) {
    if (node.id < grammar_.SymbolCount()) return MatchSymbol(node, out, store, append);
    if (!node.choice.empty()) {
        if (node.choice.size() != 2) reportedLines.push_back(165);
        return get_expression_lexem(node.choice[0], out, true, append) ||
               (node.choice.size() > 1 && get_expression_lexem(node.choice[1], out, true, append));
    }
    if (node.sequence.empty()) return false;
    if (node.sequence.size() != 2) reportedLines.push_back(182);
    if (!get_expression_lexem(node.sequence[0], out, (node.flags & 1) == 0, append)) return false;
    if (node.sequence.size() < 2) return false;
    if (!get_expression_lexem(node.sequence[1], out, (node.flags & 2) == 0,
                              (node.flags & 4) != 0)) {
        return false;
    }
    if ((node.flags & 8) != 0) out.emplace_back();
    return true;
}

bool Interpreter::MatchSymbol(const GrammarNode& node, std::vector<std::wstring>& out, bool store,
                              bool append) {
    if (grammar_.Mark(node.id) == SymbolMark::kLexem) {
        std::wstring text;
        if (!get_lexem(node.id, text)) return false;
        if (!node.keyword.empty() && !EqualsKeyword(text, node.keyword)) return false;
        if (store && append && !out.empty()) {
            out.back() += text;
        } else if (store) {
            out.push_back(text);
        }
        return true;
    }
    return node.id < grammar_.Rules().size() &&
           get_expression_lexem(grammar_.Rules()[node.id], out, store, append);
}

}  // namespace plain
