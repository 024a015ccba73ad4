#pragma once

// Runs compilers over a few lines of source, to see what they say.

#include <string>
#include <vector>

namespace structure {

struct CommandResult {
    int status = -1;     // 0 when the command succeeded
    std::string output;  // standard output and standard error
};

// Runs a program with these arguments, none of them seen by a shell, and `input` as its input.
CommandResult Run(const std::vector<std::string>& command, const std::string& input = {});

}  // namespace structure
