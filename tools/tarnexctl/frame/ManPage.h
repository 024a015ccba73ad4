#pragma once

#include <string>

namespace tarnexctl {

// The manual page in man(7) format, from the command table.
std::string ManPage();

}  // namespace tarnexctl
