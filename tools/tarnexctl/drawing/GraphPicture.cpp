#include "drawing/GraphPicture.h"

#include <algorithm>
#include <array>

#include "drawing/Layout.h"
#include "drawing/Svg.h"
#include "frame/ExitCode.h"

namespace tarnexctl {
namespace {

constexpr int kTitleHeight = 36;  // the title's height
constexpr int kFooter = 40;       // the legend's
constexpr int kTextDrop = 5;      // from a line's middle to its baseline
constexpr int kLine = 18;
constexpr int kEdge = 24;

constexpr const char* kGraphStyle =
    ".page { fill: #ffffff; }\n"
    "text { font-family: sans-serif; font-size: 13px; fill: #1f2430; }\n"
    ".title { font-size: 16px; font-weight: bold; }\n"
    ".detail, .label { font-size: 11px; fill: #5b6472; }\n"
    ".middle { text-anchor: middle; }\n"
    ".flow { fill: none; stroke: #5b6472; stroke-width: 1.5; }\n"
    ".mapping { fill: none; stroke: #b07d1a; stroke-dasharray: 5 3; }\n"
    "rect { stroke: #1f2430; }\n"
    ".page { stroke: none; }\n"
    "rect.output { fill: #1f2430; }\n"
    "rect.effect { fill: #cfe3f7; }\n"
    "rect.input { fill: #cdeccf; }\n"
    "rect.media { fill: #e6dcf5; }\n"
    "rect.mix { fill: #fbd9c2; }\n"
    "rect.property { fill: #fdf3cf; stroke: #b07d1a; }\n"
    "rect.unknown { fill: #f7c6c6; stroke-dasharray: 3 3; }\n"
    "g.output text { fill: #ffffff; }\n";

constexpr std::array kLegendKinds = {DrawnKind::kInput, DrawnKind::kMedia,    DrawnKind::kEffect,
                                     DrawnKind::kMix,   DrawnKind::kProperty, DrawnKind::kUnknown};

// Sources and mixes are round, effects and properties are not.
int Radius(DrawnKind kind, int height) {
    const bool isRound = kind == DrawnKind::kInput || kind == DrawnKind::kMedia ||
                         kind == DrawnKind::kMix || kind == DrawnKind::kOutput;
    return isRound ? height / 2 : 3;
}

std::string Point(int x, int y) {
    return std::to_string(x) + " " + std::to_string(y);
}

// From a box's right side to the left one of the box that it feeds.
void DrawEdge(Svg& svg, const GraphNode& node, const Box& from, const Box& to) {
    const int bend = (to.x - from.Right()) / 2;
    const std::string data = "M" + Point(from.Right(), from.Middle()) + " C" +
                             Point(from.Right() + bend, from.Middle()) + " " +
                             Point(to.x - bend, to.Middle()) + " " + Point(to.x, to.Middle());
    const bool isMapping = node.kind == DrawnKind::kProperty;
    svg.Path(data, isMapping ? "mapping" : "flow");
    if (!isMapping) return;
    svg.Text(from.Right() + kEdge / 3, from.Middle() - kTextDrop, ShortText(node.label), "label");
}

void DrawNode(Svg& svg, const GraphNode& node, const Box& box) {
    const char* const kind = DrawnKindWord(node.kind);
    std::string whole = node.name + " (" + kind + ")";
    if (!node.detail.empty()) whole += ": " + node.detail;
    svg.Begin(kind, whole);
    svg.Box(box.x, box.y, box.width, box.height, Radius(node.kind, box.height), kind);
    const int middle = box.x + box.width / 2;
    const int first = node.detail.empty() ? box.Middle() : box.Middle() - kLine / 2;
    svg.Text(middle, first + kTextDrop, ShortText(node.name), "middle");
    if (!node.detail.empty()) {
        svg.Text(middle, first + kLine + kTextDrop, ShortText(node.detail), "detail middle");
    }
    svg.End();
}

// The kinds that occur, in a row.
std::vector<DrawnKind> Occurring(const Graph& graph) {
    std::vector<DrawnKind> occurring;
    for (const DrawnKind kind : kLegendKinds) {
        const auto isKind = [kind](const GraphNode& node) { return node.kind == kind; };
        if (std::any_of(graph.nodes.begin(), graph.nodes.end(), isKind)) occurring.push_back(kind);
    }
    return occurring;
}

constexpr int kSwatch = 14;

int LegendWidth(const std::vector<DrawnKind>& kinds) {
    int width = kEdge;
    for (const DrawnKind kind : kinds) width += kSwatch + TextWidth(DrawnKindWord(kind)) + kEdge;
    return width;
}

void DrawLegend(Svg& svg, const std::vector<DrawnKind>& kinds, int y) {
    int x = kEdge;
    for (const DrawnKind kind : kinds) {
        const char* const word = DrawnKindWord(kind);
        svg.Box(x, y, kSwatch, kSwatch, Radius(kind, kSwatch), word);
        svg.Text(x + kSwatch + kTextDrop, y + kSwatch - 2, word, "detail");
        x += kSwatch + TextWidth(word) + kEdge;
    }
}

}  // namespace

std::string GraphPicture(const Graph& graph) {
    if (graph.nodes.size() > kMostDrawnNodes) {
        throw Failure(
            ExitCode::kInputOutput,
            std::to_string(graph.nodes.size()) + " nodes are too many for a picture",
            "the most are " + std::to_string(kMostDrawnNodes) + "; \"--format dot\" has no limit");
    }
    Layout layout = LayOut(graph);
    for (Box& box : layout.boxes) box.y += kTitleHeight;
    const std::vector<DrawnKind> kinds = Occurring(graph);
    const std::string title = ShortText(graph.title);
    const int width =
        std::max({layout.width, LegendWidth(kinds), TextWidth(title) * 5 / 4 + 2 * kEdge});
    Svg svg(width, layout.height + kTitleHeight + kFooter, graph.title, kGraphStyle);
    svg.Text(kEdge, kTitleHeight, title, "title");
    for (std::size_t i = 1; i < graph.nodes.size(); ++i) {
        DrawEdge(svg, graph.nodes[i], layout.boxes[i], layout.boxes[graph.nodes[i].feeds]);
    }
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        DrawNode(svg, graph.nodes[i], layout.boxes[i]);
    }
    DrawLegend(svg, kinds, layout.height + kTitleHeight);
    return svg.Finish();
}

}  // namespace tarnexctl
