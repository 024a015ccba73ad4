#pragma once

#include <string>
#include <vector>

#include "frame/Command.h"

namespace tarnexctl {

// Every command, in the order of the help. The command line, the help, the completions and the
// manual are all made from it.
const std::vector<CommandSpec>& CommandTable();

// Null when there is none of that name.
const CommandSpec* FindCommand(const std::string& name);

// The options that every command takes.
const std::vector<OptionSpec>& CommonOptions();

// Those that are offered to people, hidden commands left out.
std::vector<const CommandSpec*> OfferedCommands();

inline constexpr const char* kProgramName = "tarnexctl";
inline constexpr const char* kProgramSummary =
    "inspects effect plug-ins, compositions, settings and trace logs";

}  // namespace tarnexctl
