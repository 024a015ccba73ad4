#include "drawing/Layout.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

namespace tarnexctl {
namespace {

constexpr int kMargin = 24;
constexpr int kColumnPixels = 8;  // of one letter
constexpr std::size_t kMostBoxColumns = 36;
constexpr int kPadding = 12;
constexpr int kLineHeight = 18;
constexpr int kRowHeight = 2 * kLineHeight + kPadding;  // the highest box's
constexpr int kRowGap = 14;
constexpr int kColumnGap = 56;
constexpr std::string_view kEllipsis = "\xE2\x80\xA6";

// Letters from here on, those of East Asia, take two columns.
constexpr std::uint32_t kFirstWide = 0x1100;

// The next character's length in bytes, and its columns.
std::pair<std::size_t, std::size_t> NextCharacter(std::string_view utf8) {
    const auto first = static_cast<unsigned char>(utf8.front());
    if (first < 0xE0) return {first < 0x80 ? 1 : 2, 1};
    if (first >= 0xF0) return {4, 2};
    const std::uint32_t code = (first & 0x0Fu) << 12 | (static_cast<unsigned char>(utf8[1]) & 0x3Fu)
                                                           << 6;
    const bool isPunctuation = code >= 0x2000 && code < 0x2E80;
    return {3, code >= kFirstWide && !isPunctuation ? 2 : 1};
}

std::size_t ColumnsOf(std::string_view utf8) {
    std::size_t columns = 0;
    while (!utf8.empty()) {
        const auto [bytes, width] = NextCharacter(utf8);
        columns += width;
        utf8.remove_prefix(std::min(bytes, utf8.size()));
    }
    return columns;
}

Box SizeOf(const GraphNode& node) {
    Box box;
    box.width =
        std::max(TextWidth(ShortText(node.name)), TextWidth(ShortText(node.detail))) + 2 * kPadding;
    box.height = (node.detail.empty() ? 1 : 2) * kLineHeight + kPadding;
    return box;
}

// How far each node is from the output. Nodes stand behind those that they feed.
std::vector<std::size_t> Depths(const Graph& graph) {
    std::vector<std::size_t> depths(graph.nodes.size(), 0);
    for (std::size_t i = 1; i < depths.size(); ++i) depths[i] = depths[graph.nodes[i].feeds] + 1;
    return depths;
}

// Columns are as wide as their widest box, and as far apart as the longest label between them.
void PlaceColumns(const Graph& graph, Layout& layout) {
    const std::vector<std::size_t> depths = Depths(graph);
    const std::size_t columns = *std::max_element(depths.begin(), depths.end()) + 1;
    std::vector<int> widths(columns, 0);
    std::vector<int> gaps(columns, kColumnGap);
    for (std::size_t i = 0; i < depths.size(); ++i) {
        widths[depths[i]] = std::max(widths[depths[i]], layout.boxes[i].width);
        const int label = TextWidth(ShortText(graph.nodes[i].label));
        gaps[depths[i]] = std::max(gaps[depths[i]], label + kColumnGap);
    }
    std::vector<int> lefts(columns);
    int x = kMargin;
    for (std::size_t depth = columns; depth-- > 0;) {
        lefts[depth] = x;
        x += widths[depth] + gaps[depth];
    }
    layout.width = x - gaps[0] + kMargin;
    // Boxes end where their column ends: the way to the next column is then the same for all.
    for (std::size_t i = 0; i < depths.size(); ++i) {
        layout.boxes[i].x = lefts[depths[i]] + widths[depths[i]] - layout.boxes[i].width;
    }
}

// Nodes without any before them take the next row; the others stand in the middle of their own.
// From the last node to the first, so that those that feed a node are placed before it.
void PlaceRows(const Graph& graph, Layout& layout) {
    const std::size_t count = graph.nodes.size();
    constexpr int kNone = std::numeric_limits<int>::max();
    std::vector<int> top(count, kNone);     // of the first that feeds it
    std::vector<int> bottom(count, kNone);  // of the last
    int y = 0;
    for (std::size_t i = count; i-- > 0;) {
        Box& box = layout.boxes[i];
        if (top[i] == kNone) {
            y -= kRowHeight;
            box.y = y + (kRowHeight - box.height) / 2;
            y -= kRowGap;
        } else {
            box.y = (top[i] + bottom[i]) / 2 - box.height / 2;
        }
        if (i == 0) break;
        const std::size_t feeds = graph.nodes[i].feeds;
        if (top[feeds] == kNone) bottom[feeds] = box.Middle();
        top[feeds] = box.Middle();
    }
}

}  // namespace

int TextWidth(std::string_view utf8) {
    return static_cast<int>(ColumnsOf(utf8)) * kColumnPixels;
}

std::string ShortText(std::string_view utf8) {
    std::size_t columns = 0;
    std::size_t end = 0;
    while (end < utf8.size()) {
        const auto [bytes, width] = NextCharacter(utf8.substr(end));
        if (columns + width > kMostBoxColumns) {
            return std::string(utf8.substr(0, end)).append(kEllipsis);
        }
        columns += width;
        end += bytes;
    }
    return std::string(utf8);
}

Layout LayOut(const Graph& graph) {
    Layout layout;
    layout.boxes.reserve(graph.nodes.size());
    for (const GraphNode& node : graph.nodes) layout.boxes.push_back(SizeOf(node));
    PlaceColumns(graph, layout);
    PlaceRows(graph, layout);
    int top = 0;
    int bottom = 0;
    for (const Box& box : layout.boxes) {
        top = std::min(top, box.y);
        bottom = std::max(bottom, box.Bottom());
    }
    for (Box& box : layout.boxes) box.y += kMargin - top;
    layout.height = bottom - top + 2 * kMargin;
    return layout;
}

}  // namespace tarnexctl
