#include "compositions/StructureNode.h"

#include <utility>

namespace compositions {
namespace {

using Children = std::vector<StructureNode>;

struct CopyStep {
    const StructureNode* from;
    StructureNode* to;
};

void CopyChildren(const Children& from, Children& to, std::vector<CopyStep>& pending) {
    to.reserve(from.size());  // keeps the addresses that pending holds
    for (const StructureNode& child : from) {
        StructureNode& copy = to.emplace_back(child.name);
        if (!child.inputs.empty() || !child.secondary.empty()) pending.push_back({&child, &copy});
    }
}

struct ComparePair {
    const StructureNode* left;
    const StructureNode* right;
};

bool QueueChildren(const Children& left, const Children& right, std::vector<ComparePair>& pending) {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) pending.push_back({&left[i], &right[i]});
    return true;
}

}  // namespace

StructureNode::StructureNode(const StructureNode& other) : name(other.name) {
    std::vector<CopyStep> pending{{&other, this}};
    while (!pending.empty()) {
        const CopyStep step = pending.back();
        pending.pop_back();
        CopyChildren(step.from->inputs, step.to->inputs, pending);
        CopyChildren(step.from->secondary, step.to->secondary, pending);
    }
}

StructureNode::StructureNode(StructureNode&& other) noexcept
    : name(std::move(other.name)),
      inputs(std::move(other.inputs)),
      secondary(std::move(other.secondary)) {}

StructureNode& StructureNode::operator=(const StructureNode& other) {
    if (this != &other) *this = StructureNode(other);
    return *this;
}

StructureNode& StructureNode::operator=(StructureNode&& other) noexcept {
    StructureNode taken(std::move(other));
    std::swap(name, taken.name);
    inputs.swap(taken.inputs);
    secondary.swap(taken.secondary);
    return *this;
}

// Walks down to a childless node, removes it from its parent and goes on from there: needs neither
// stack nor allocation.
void StructureNode::DropChildren() noexcept {
    StructureNode* node = this;
    for (;;) {
        Children& children = !node->inputs.empty() ? node->inputs : node->secondary;
        if (!children.empty()) {
            children.back().parent_ = node;
            node = &children.back();
        } else if (node == this) {
            return;
        } else {
            node = node->parent_;
            (!node->inputs.empty() ? node->inputs : node->secondary).pop_back();
        }
    }
}

bool StructureNode::operator==(const StructureNode& other) const {
    std::vector<ComparePair> pending{{this, &other}};
    while (!pending.empty()) {
        const ComparePair pair = pending.back();
        pending.pop_back();
        if (pair.left->name != pair.right->name) return false;
        if (!QueueChildren(pair.left->inputs, pair.right->inputs, pending)) return false;
        if (!QueueChildren(pair.left->secondary, pair.right->secondary, pending)) return false;
    }
    return true;
}

}  // namespace compositions
