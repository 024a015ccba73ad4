#pragma once

// The tables of virtual operations as a compiler lays them out for a target.

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace structure {

// Operations in slot order, each as "result name(arguments)" without its class; a destructor is
// "~", whether the target keeps one entry for it or two.
using Slots = std::vector<std::string>;

// Keyed by the complete class and the base whose table it is.
using VtableDump = std::map<std::pair<std::string, std::string>, Slots>;

// Lays LayoutProbe.cc out for a target triple. A compiler error fails the running test.
VtableDump DumpVtables(const std::string& target);

}  // namespace structure
