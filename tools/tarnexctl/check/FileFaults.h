#pragma once

#include <string_view>

#include "check/Diagnostics.h"

namespace tarnexctl {

// Whether the bytes are no text that a script could be; says why.
bool CheckFileFaults(std::string_view bytes, Diagnostics& diagnostics);

}  // namespace tarnexctl
