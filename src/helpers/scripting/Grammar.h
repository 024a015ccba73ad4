#pragma once

// The tables of a language: its lexem kinds and its rules, which share one number space. A table
// that nobody changes may be read by any thread.

#include <cstdint>
#include <map>
#include <vector>

#include "helpers/scripting/GrammarNode.h"
#include "helpers/scripting/LexemDefinition.h"

namespace helpers::scripting {

enum class SymbolMark : std::uint32_t { kUndefined = 0, kRule = 1, kLexem = 2 };

class Grammar {
public:
    // Both refuse a number that is taken, by either sort, and then change nothing. The tables grow
    // to hold any other number: memory goes by the largest.
    bool add_lexem(const LexemDefinition& definition);
    bool add_rule(std::uint32_t number, const GrammarNode& node);

    SymbolMark Mark(std::uint32_t symbol) const {
        return symbol < marks_.size() ? marks_[symbol] : SymbolMark::kUndefined;
    }
    std::size_t SymbolCount() const { return marks_.size(); }
    const std::vector<GrammarNode>& Rules() const { return rules_; }
    const std::map<std::uint32_t, LexemDefinition>& Lexems() const { return lexems_; }

private:
    bool Take(std::uint32_t symbol, SymbolMark mark);

    std::vector<SymbolMark> marks_;
    std::vector<GrammarNode> rules_;
    std::map<std::uint32_t, LexemDefinition> lexems_;
};

}  // namespace helpers::scripting
