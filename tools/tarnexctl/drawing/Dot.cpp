#include "drawing/Dot.h"

namespace tarnexctl {
namespace {

const char* Shape(DrawnKind kind) {
    switch (kind) {
        case DrawnKind::kOutput:
            return "doublecircle";
        case DrawnKind::kEffect:
            return "box";
        case DrawnKind::kInput:
            return "cds";
        case DrawnKind::kMedia:
            return "folder";
        case DrawnKind::kMix:
            return "diamond";
        case DrawnKind::kProperty:
            return "note";
        case DrawnKind::kUnknown:
            return "plaintext";
    }
    return "plaintext";
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '"' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::string NodeId(std::size_t index) {
    return "n" + std::to_string(index);
}

}  // namespace

std::string DotString(std::string_view text) {
    return '"' + Escaped(text) + '"';
}

std::string DotText(const Graph& graph) {
    std::string text = "digraph " + DotString(graph.title) +
                       " {\n    rankdir=LR;\n    label=" + DotString(graph.title) +
                       ";\n    node [fontname=\"sans-serif\"];\n" +
                       "    edge [fontname=\"sans-serif\"];\n";
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const GraphNode& node = graph.nodes[i];
        std::string label = Escaped(node.name);
        if (!node.detail.empty()) label += "\\n" + Escaped(node.detail);
        text +=
            "    " + NodeId(i) + " [shape=" + Shape(node.kind) + ", label=\"" + label + "\"];\n";
    }
    for (std::size_t i = 1; i < graph.nodes.size(); ++i) {
        const GraphNode& node = graph.nodes[i];
        text += "    " + NodeId(i) + " -> " + NodeId(node.feeds);
        if (node.kind == DrawnKind::kProperty) {
            text += " [style=dashed, label=" + DotString(node.label) + "]";
        }
        text += ";\n";
    }
    return text + "}\n";
}

}  // namespace tarnexctl
