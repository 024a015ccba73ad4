#pragma once

// What a host's factory would hold of one plug-in library. Runs plug-in code: call it in a child
// process.

#include <string>

#include "frame/Json.h"
#include "probe/ChildReport.h"

namespace tarnexctl {

// Builds a global effect factory over the library with that absolute path alone. The result holds
// "count", "effects" (index, name, flags, inputs) and "findings" (code, detail), which say why
// there are none.
Json ListLibrary(const std::string& path, ChildReport& report);

}  // namespace tarnexctl
