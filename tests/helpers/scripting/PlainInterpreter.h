#pragma once

// The toolkit's measure: lexer, matcher and preprocessor written as their descriptions read,
// recursive and without any cleverness. For short texts only.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "helpers/scripting/Grammar.h"

namespace plain {

constexpr std::size_t kNoPosition = static_cast<std::size_t>(-1);

// The text of a script's bytes: no comments, widened by sign extension, a blank and a zero behind.
std::wstring Preprocess(std::string_view bytes);

class Interpreter {
public:
    Interpreter(std::wstring text, std::wstring blanks, helpers::scripting::Grammar grammar)
        : text_(std::move(text)), blanks_(std::move(blanks)), grammar_(std::move(grammar)) {}

    // Starts over with another text.
    void TakeText(std::wstring text);

    bool get_lexem(std::uint32_t kind, std::wstring& text);
    bool get_expression(std::uint32_t rule, std::vector<std::wstring>& out);
    bool find_expression(std::uint32_t rule, bool peek);
    bool get_expression_lexem(const helpers::scripting::GrammarNode& node,
                              std::vector<std::wstring>& out, bool store, bool append);

    std::size_t position = 0;
    std::uint32_t lastKind = 0;
    std::wstring lastText;
    std::vector<int> reportedLines;  // of failed consistency checks
    std::size_t steps = 0;           // nodes visited; some grammars need very many

private:
    bool MatchNode(const helpers::scripting::GrammarNode& node, std::vector<std::wstring>& out,
                   bool store, bool append);
    bool MatchSymbol(const helpers::scripting::GrammarNode& node, std::vector<std::wstring>& out,
                     bool store, bool append);

    std::wstring text_;
    std::wstring blanks_;
    helpers::scripting::Grammar grammar_;
};

}  // namespace plain
