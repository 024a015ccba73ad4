#pragma once

#include <cstddef>
#include <string>

#include "drawing/Graph.h"

namespace tarnexctl {

// More than anybody looks at, and than viewers show without complaint.
inline constexpr std::size_t kMostDrawnNodes = 5000;

// The graph as an SVG picture. A Failure when it has more nodes than kMostDrawnNodes.
std::string GraphPicture(const Graph& graph);

}  // namespace tarnexctl
