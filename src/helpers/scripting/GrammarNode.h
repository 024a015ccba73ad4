#pragma once

// Grammar rules as data: a node is a symbol (a lexem kind or a rule's number), a choice of two, or
// a sequence of two. Any thread, like all plain data.

#include <cstdint>
#include <string>
#include <vector>

namespace helpers::scripting {

constexpr std::uint32_t kCompositeNode = 0xFFFFFFFF;

// Flags of a sequence.
enum SequenceFlag : std::uint32_t {
    kDropFirst = 1,   // do not store what the first child matches
    kDropSecond = 2,  // do not store what the second child matches
    kJoin = 4,        // append the second child's first piece to the last stored string
    kAddEmpty = 8,    // after both children, add one empty string
};

// A dropped child that is a choice or a sequence still stores: each of those decides for its own
// children. Dropping reaches lexems, and rules that are lexems themselves.
struct GrammarNode {
    std::uint32_t id = kCompositeNode;
    std::wstring keyword;               // what the lexem must equal but for case; empty for any
    std::vector<GrammarNode> choice;    // two alternatives, tried in order
    std::vector<GrammarNode> sequence;  // two parts
    std::uint32_t flags = 0;            // SequenceFlag

    GrammarNode() = default;
    // A symbol may stand wherever a node may.
    GrammarNode(std::uint32_t symbol) : id(symbol) {}  // NOLINT: implicit on purpose

    bool operator==(const GrammarNode&) const = default;
};

inline GrammarNode symbol(std::uint32_t id) {
    return GrammarNode(id);
}

inline GrammarNode keyword(std::uint32_t id, std::wstring text) {
    GrammarNode node(id);
    node.keyword = std::move(text);
    return node;
}

inline GrammarNode either(GrammarNode first, GrammarNode second) {
    GrammarNode node;
    node.choice.reserve(2);
    node.choice.push_back(std::move(first));
    node.choice.push_back(std::move(second));
    return node;
}

inline GrammarNode then(GrammarNode first, GrammarNode second, std::uint32_t flags = 0) {
    GrammarNode node;
    node.sequence.reserve(2);
    node.sequence.push_back(std::move(first));
    node.sequence.push_back(std::move(second));
    node.flags = flags;
    return node;
}

}  // namespace helpers::scripting
