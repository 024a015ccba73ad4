#include "check/FurthestMatch.h"

#include <algorithm>
#include <deque>

#include "compositions/UpperName.h"
#include "compositions/language/ScriptCharacters.h"

namespace tarnexctl {
namespace {

using compositions::CompInterpreter;
using helpers::scripting::GrammarNode;
using helpers::scripting::SymbolMark;

constexpr std::size_t kMostSteps = 50'000;

// What is still to be matched: a node, and what follows it.
struct Rest {
    const GrammarNode* node;
    const Rest* next;
};

struct Branch {
    const Rest* rest;
    std::size_t position;
};

class Walker {
public:
    explicit Walker(CompInterpreter& interpreter) : interpreter_(interpreter) {}

    void Start(const GrammarNode& node, std::size_t position) {
        branches_.push_back({Keep(&node, nullptr), position});
    }

    FurthestMatch Walk() {
        for (std::size_t step = 0; step < kMostSteps && !branches_.empty(); ++step) {
            const Branch branch = branches_.back();
            branches_.pop_back();
            if (branch.rest != nullptr) Follow(*branch.rest->node, branch.rest->next, branch);
        }
        return std::move(furthest_);
    }

private:
    const Rest* Keep(const GrammarNode* node, const Rest* next) {
        return &rests_.emplace_back(Rest{node, next});
    }

    void Follow(const GrammarNode& node, const Rest* next, const Branch& branch) {
        const auto& grammar = interpreter_.Tables();
        if (!node.choice.empty()) {  // the first alternative is on top
            for (auto part = node.choice.rbegin(); part != node.choice.rend(); ++part) {
                branches_.push_back({Keep(&*part, next), branch.position});
            }
        } else if (!node.sequence.empty()) {
            for (auto part = node.sequence.rbegin(); part != node.sequence.rend(); ++part) {
                next = Keep(&*part, next);
            }
            branches_.push_back({next, branch.position});
        } else if (grammar.Mark(node.id) == SymbolMark::kLexem) {
            ReadLexem(node, next, branch.position);
        } else if (grammar.Mark(node.id) == SymbolMark::kRule) {
            branches_.push_back({Keep(&grammar.Rules()[node.id], next), branch.position});
        }
    }

    void ReadLexem(const GrammarNode& node, const Rest* next, std::size_t position) {
        std::wstring_view lexem;
        interpreter_.SetPosition(position);
        if (interpreter_.get_lexem(node.id, lexem) &&
            (node.keyword.empty() || compositions::IsKeyword(lexem, node.keyword))) {
            branches_.push_back({next, interpreter_.Position()});
            return;
        }
        const std::wstring& text = interpreter_.Text();
        const std::size_t here = std::min(
            text.find_first_not_of(compositions::characters::kBlanks, position), text.size());
        if (here < furthest_.position) return;
        if (here > furthest_.position) furthest_ = {here, {}};
        const ExpectedLexem expected{node.id, node.keyword};
        if (std::find(furthest_.expected.begin(), furthest_.expected.end(), expected) ==
            furthest_.expected.end()) {
            furthest_.expected.push_back(expected);
        }
    }

    CompInterpreter& interpreter_;
    std::deque<Rest> rests_;  // keeps the addresses
    std::vector<Branch> branches_;
    FurthestMatch furthest_;
};

}  // namespace

bool FurthestMatch::Expects(std::uint32_t kind) const {
    return std::any_of(expected.begin(), expected.end(), [&](const ExpectedLexem& lexem) {
        return lexem.kind == kind && lexem.keyword.empty();
    });
}

bool FurthestMatch::ExpectsKeyword(std::wstring_view keyword) const {
    return std::any_of(expected.begin(), expected.end(),
                       [&](const ExpectedLexem& lexem) { return lexem.keyword == keyword; });
}

FurthestMatch FindFurthestMatch(CompInterpreter& interpreter, std::span<const std::uint32_t> rules,
                                std::size_t position) {
    std::deque<GrammarNode> nodes(rules.begin(), rules.end());
    Walker walker(interpreter);
    // What is started last is followed first.
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) walker.Start(*node, position);
    return walker.Walk();
}

}  // namespace tarnexctl
