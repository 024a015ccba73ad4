#pragma once

#include <string>

#include "drawing/Graph.h"

namespace tarnexctl {

// The graph in the DOT language.
std::string DotText(const Graph& graph);

// A text as a quoted DOT string, shown by a label exactly as it is.
std::string DotString(std::string_view text);

}  // namespace tarnexctl
