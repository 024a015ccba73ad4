#pragma once

// A composition's structure as what is drawn: a tree of nodes, each feeding one other, down to the
// output. A name that the structure uses twice is drawn twice.

#include <cstddef>
#include <string>
#include <vector>

#include "compositions/CompositionDescription.h"

namespace tarnexctl {

enum class DrawnKind { kOutput, kEffect, kInput, kMedia, kMix, kProperty, kUnknown };

struct GraphNode {
    DrawnKind kind = DrawnKind::kOutput;
    std::string name;       // UTF-8; harmless on a terminal
    std::string detail;     // what is behind the name: an effect, a path, a number; often empty
    std::size_t feeds = 0;  // the node that it feeds, which stands before it
    std::string label;      // on the way there: the target property of a mapping
};

struct Graph {
    std::string title;
    std::vector<GraphNode> nodes;  // first the output; then as a script writes them

    // Whether anything feeds the output.
    bool IsEmpty() const { return nodes.size() == 1; }
};

// The kind's word in documents and legends ("effect").
const char* DrawnKindWord(DrawnKind kind);

// Properties that MAPPING ties to an effect feed that effect, at the first place where the
// structure has it.
Graph MakeGraph(const compositions::CompositionDescription& description);

}  // namespace tarnexctl
