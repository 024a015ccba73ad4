#pragma once

#include <string>
#include <vector>

#include "frame/Arguments.h"
#include "frame/Command.h"

namespace tarnexctl {

struct CommandLine {
    const CommandSpec* command = nullptr;  // null when only a common option was given
    Arguments arguments;
};

// Reads the arguments (UTF-8, without the program's name) by the command table. Throws a usage
// Failure for anything that the table does not allow.
CommandLine ReadCommandLine(const std::vector<std::string>& arguments);

// As far as it can be told of a line that cannot be read as a whole: the command, and what decides
// on the form of the output.
CommandLine ReadCommonOptions(const std::vector<std::string>& arguments);

}  // namespace tarnexctl
