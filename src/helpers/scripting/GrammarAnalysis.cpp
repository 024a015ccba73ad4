#include "helpers/scripting/GrammarAnalysis.h"

#include <algorithm>
#include <vector>

namespace helpers::scripting {

NodeSort SortOf(const Grammar& grammar, const GrammarNode& node) {
    if (node.id >= grammar.SymbolCount()) {
        if (!node.choice.empty()) return NodeSort::kChoice;
        return node.sequence.empty() ? NodeSort::kNothing : NodeSort::kSequence;
    }
    if (grammar.Mark(node.id) == SymbolMark::kLexem) return NodeSort::kLexem;
    return node.id < grammar.Rules().size() ? NodeSort::kRule : NodeSort::kNothing;
}

GrammarAnalysis::GrammarAnalysis(const Grammar& grammar) : grammar_(grammar) {
    const auto count = static_cast<std::uint32_t>(grammar.Rules().size());
    for (std::uint32_t rule = 0; rule < count; ++rule) Collect(grammar.Rules()[rule], true, rule);
    for (const auto& [rule, used] : uses_) {
        if (Leads(uses_, rule, rule)) recursive_.insert(rule);
    }
}

bool GrammarAnalysis::ComesToRecursion(std::uint32_t rule) const {
    return std::any_of(recursive_.begin(), recursive_.end(), [&](std::uint32_t recursive) {
        return recursive == rule || Leads(uses_, rule, recursive);
    });
}

// The rules that the node names, as used by `rule`; `first`: nothing was read before the node.
void GrammarAnalysis::Collect(const GrammarNode& node, bool first, std::uint32_t rule) {
    switch (SortOf(grammar_, node)) {
        case NodeSort::kRule:
            uses_[rule].insert(node.id);
            if (first) first_[rule].insert(node.id);
            break;
        case NodeSort::kChoice:
            for (const GrammarNode& child : node.choice) Collect(child, first, rule);
            break;
        case NodeSort::kSequence:
            for (std::size_t child = 0; child < node.sequence.size(); ++child) {
                Collect(node.sequence[child], first && child == 0, rule);
            }
            break;
        default:
            break;
    }
}

bool GrammarAnalysis::Leads(const Relation& relation, std::uint32_t from, std::uint32_t to) {
    std::vector<std::uint32_t> open{from};
    Rules seen;
    while (!open.empty()) {
        const auto next = relation.find(open.back());
        open.pop_back();
        if (next == relation.end()) continue;
        if (next->second.count(to) != 0) return true;
        for (const std::uint32_t rule : next->second) {
            if (seen.insert(rule).second) open.push_back(rule);
        }
    }
    return false;
}

std::wstring GrammarAnalysis::FirstCharacters(const GrammarNode& node) const {
    Rules visited;
    std::wstring characters;
    AddFirst(node, visited, characters);
    return characters;
}

void GrammarAnalysis::AddFirst(const GrammarNode& node, Rules& visited, std::wstring& out) const {
    switch (SortOf(grammar_, node)) {
        case NodeSort::kLexem:
            out += grammar_.Lexems().at(node.id).start_set;
            break;
        case NodeSort::kRule:
            if (!visited.insert(node.id).second) return;
            AddFirst(grammar_.Rules()[node.id], visited, out);
            break;
        case NodeSort::kChoice:
            for (const GrammarNode& child : node.choice) AddFirst(child, visited, out);
            break;
        case NodeSort::kSequence:
            AddFirst(node.sequence.front(), visited, out);
            break;
        case NodeSort::kNothing:
            break;
    }
}

bool GrammarAnalysis::AlwaysStores(const GrammarNode& node, bool store) const {
    Rules visited;
    return AlwaysStores(node, store, visited);
}

bool GrammarAnalysis::AlwaysStores(const GrammarNode& node, bool store, Rules& visited) const {
    switch (SortOf(grammar_, node)) {
        case NodeSort::kLexem:
            return store;
        case NodeSort::kRule: {
            if (!visited.insert(node.id).second) return false;
            const bool always = AlwaysStores(grammar_.Rules()[node.id], store, visited);
            visited.erase(node.id);
            return always;
        }
        case NodeSort::kChoice:
            for (const GrammarNode& child : node.choice) {
                if (!AlwaysStores(child, true, visited)) return false;
            }
            return true;
        case NodeSort::kSequence:
            return (node.flags & kAddEmpty) != 0 ||
                   AlwaysStores(node.sequence.front(), (node.flags & kDropFirst) == 0, visited) ||
                   (node.sequence.size() > 1 &&
                    AlwaysStores(node.sequence[1], (node.flags & kDropSecond) == 0, visited));
        case NodeSort::kNothing:
            return true;  // it never matches
    }
    return false;
}

bool GrammarAnalysis::MayReport() const {
    const auto& rules = grammar_.Rules();
    return std::any_of(rules.begin(), rules.end(),
                       [&](const GrammarNode& node) { return MayReport(node); });
}

bool GrammarAnalysis::MayReport(const GrammarNode& node) const {
    const NodeSort sort = SortOf(grammar_, node);
    if (sort != NodeSort::kChoice && sort != NodeSort::kSequence) return false;
    const auto& children = sort == NodeSort::kChoice ? node.choice : node.sequence;
    if (children.size() != 2) return true;
    if (sort == NodeSort::kSequence && (node.flags & kJoin) != 0 &&
        !AlwaysStores(children[0], (node.flags & kDropFirst) == 0)) {
        return true;
    }
    return MayReport(children[0]) || MayReport(children[1]);
}

}  // namespace helpers::scripting
