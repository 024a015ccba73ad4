#pragma once

// The wiring of a composition as a tree: a node is fed by its children.

#include <utility>
#include <vector>

#include "compositions/UpperName.h"

namespace compositions {

// Trees may be a million levels deep: copying, comparing and destroying use no recursion.
struct StructureNode {
    UpperName name;
    std::vector<StructureNode> inputs;     // what feeds the node, in script order
    std::vector<StructureNode> secondary;  // empty for scripts; carried by archives

    StructureNode() = default;
    explicit StructureNode(UpperName nodeName) : name(std::move(nodeName)) {}
    StructureNode(const StructureNode& other);
    StructureNode(StructureNode&& other) noexcept;
    StructureNode& operator=(const StructureNode& other);
    // The other may stand anywhere below this one.
    StructureNode& operator=(StructureNode&& other) noexcept;
    ~StructureNode() {
        if (!inputs.empty() || !secondary.empty()) DropChildren();
    }

    bool operator==(const StructureNode& other) const;

private:
    void DropChildren() noexcept;

    StructureNode* parent_ = nullptr;  // the way back up, set while the tree is taken down
};

}  // namespace compositions
