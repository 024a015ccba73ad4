#pragma once

// What the host can be told to do, one command per argument of the program.

#include <string>
#include <vector>

namespace trace_host {

// Runs `words[0]` with the words behind it as arguments. False when there is no such command.
bool RunCommand(const std::vector<std::string>& words);

}  // namespace trace_host
