#pragma once

// What can be said of a grammar before any text is there. Used by the compiler alone.

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "helpers/scripting/Grammar.h"

namespace helpers::scripting {

// What a node's identity makes of it in a grammar.
enum class NodeSort { kLexem, kRule, kChoice, kSequence, kNothing };
NodeSort SortOf(const Grammar& grammar, const GrammarNode& node);

class GrammarAnalysis {
public:
    explicit GrammarAnalysis(const Grammar& grammar);

    // All characters that a match of the node may begin with.
    std::wstring FirstCharacters(const GrammarNode& node) const;
    // Whether every match of the node stores a piece. Says no when in doubt.
    bool AlwaysStores(const GrammarNode& node, bool store) const;
    // Whether matching rule `from` may come to rule `to` before anything is read.
    bool ComesFirst(std::uint32_t from, std::uint32_t to) const { return Leads(first_, from, to); }
    // Whether matching the rule may come to the rule again.
    bool IsRecursive(std::uint32_t rule) const { return recursive_.count(rule) != 0; }
    // Whether matching some rule, or the node itself, may have an inconsistency to report. Says yes
    // when in doubt.
    bool MayReport() const;
    bool MayReport(const GrammarNode& node) const;
    // Whether matching the rule may come to a rule inside a match of that same rule.
    bool ComesToRecursion(std::uint32_t rule) const;

private:
    using Rules = std::set<std::uint32_t>;
    using Relation = std::map<std::uint32_t, Rules>;

    void Collect(const GrammarNode& node, bool first, std::uint32_t rule);
    static bool Leads(const Relation& relation, std::uint32_t from, std::uint32_t to);
    void AddFirst(const GrammarNode& node, Rules& visited, std::wstring& out) const;
    bool AlwaysStores(const GrammarNode& node, bool store, Rules& visited) const;

    const Grammar& grammar_;
    Relation first_;
    Relation uses_;
    Rules recursive_;
};

}  // namespace helpers::scripting
