#pragma once

#include <string>
#include <vector>

#include "frame/Command.h"

namespace tarnexctl {

// "--format FORMAT", one of those, the first of them otherwise.
OptionSpec FormatOption(const std::vector<std::string>& formats);

// The format that was asked for: by --format, else by the extension of --output, else the first.
std::string WantedFormat(const Arguments& arguments, const std::vector<std::string>& formats);

}  // namespace tarnexctl
