#include "helpers/scripting/Grammar.h"

namespace helpers::scripting {

bool Grammar::Take(std::uint32_t symbol, SymbolMark mark) {
    if (Mark(symbol) != SymbolMark::kUndefined || symbol == kCompositeNode) return false;
    if (symbol >= marks_.size()) marks_.resize(std::size_t{symbol} + 1, SymbolMark::kUndefined);
    marks_[symbol] = mark;
    return true;
}

bool Grammar::add_lexem(const LexemDefinition& definition) {
    if (!Take(definition.kind, SymbolMark::kLexem)) return false;
    lexems_.insert_or_assign(definition.kind, definition);
    return true;
}

bool Grammar::add_rule(std::uint32_t number, const GrammarNode& node) {
    if (!Take(number, SymbolMark::kRule)) return false;
    if (number >= rules_.size()) rules_.resize(std::size_t{number} + 1);
    rules_[number] = node;
    return true;
}

}  // namespace helpers::scripting
