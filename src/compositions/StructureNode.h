#pragma once

// The wiring of a composition as a tree: a node is fed by its children.

#include <vector>

#include "compositions/UpperName.h"

namespace compositions {

// Copying, comparing and destroying work without recursion: trees may be a million levels deep.
struct StructureNode {
    UpperName name;
    std::vector<StructureNode> inputs;     // what feeds the node, in script order
    std::vector<StructureNode> secondary;  // empty for scripts; carried by archives

    StructureNode() = default;
    explicit StructureNode(UpperName nodeName);
    StructureNode(const StructureNode& other);
    StructureNode(StructureNode&&) noexcept = default;
    StructureNode& operator=(const StructureNode& other);
    StructureNode& operator=(StructureNode&& other) noexcept;
    ~StructureNode();

    bool operator==(const StructureNode& other) const;
};

}  // namespace compositions
