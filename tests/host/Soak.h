#pragma once

// Everything that hosts do with a factory, from eight threads, for as long as it is told.

#include <functional>
#include <string>
#include <vector>

#include "tarnex/GlobalFxFactory.h"

inline constexpr int kSoakThreads = 8;

// Works for that many seconds on the factory, whose first effects have properties, and on the
// scripts of those paths, and says:
//   "calls N": how many calls it made;
//   "said N N ...": how many of its lines each thread had logged. A line of thread T says
//       property: "soak T N ", the first with N = 0;
//   "handles N threads N mappings N bytes N": what the process holds more at the end than after a
//       fifth of the time;
//   "wrong N": calls that answered something unexpected;
//   "fresh N": scripts that were registered for the first time after that fifth. They stay.
// The process's settings must have archives saved beside scripts.
void Soak(tarnex::GlobalFXFactory& factory, int seconds, const std::vector<std::string>& scripts,
          const std::function<void(const std::string&)>& say);
