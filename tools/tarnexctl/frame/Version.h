#pragma once

#include <string>

#include "frame/Json.h"

namespace tarnexctl {

// "tarnexctl 0.1.0 (Windows x64, g++ 12.2.0)"
std::string VersionLine();
Json VersionDocument();

}  // namespace tarnexctl
