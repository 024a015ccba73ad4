#pragma once

// Where the nodes of a graph stand: in columns, the output at the right and every node left of the
// one that it feeds; from top to bottom in the order of the script, each in the middle of what
// feeds it. In whole pixels, so that the same graph always gives the same picture.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/Graph.h"

namespace tarnexctl {

struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int Middle() const { return y + height / 2; }
    int Right() const { return x + width; }
    int Bottom() const { return y + height; }
};

struct Layout {
    std::vector<Box> boxes;  // one for each node
    int width = 0;
    int height = 0;
};

// Neither time nor memory grows faster than the number of nodes, and nothing is recursive.
Layout LayOut(const Graph& graph);

// How wide a text is drawn, roughly: its font is the reader's.
int TextWidth(std::string_view utf8);

// The text, or its beginning and an ellipsis where it is longer than a box may be.
std::string ShortText(std::string_view utf8);

}  // namespace tarnexctl
