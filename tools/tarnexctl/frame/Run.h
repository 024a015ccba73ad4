#pragma once

#include <string>
#include <vector>

namespace tarnexctl {

// Runs the program with those arguments (UTF-8, without its own name) and returns the exit code.
// Nothing escapes it.
int Run(const std::vector<std::string>& arguments);

}  // namespace tarnexctl
