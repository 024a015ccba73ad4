#pragma once

#include "frame/Command.h"
#include "frame/Writer.h"

namespace tarnexctl {

// The program's own help: every command with its summary.
void PrintProgramHelp(Writer& out);

// One command's help, with its examples.
void PrintCommandHelp(Writer& out, const CommandSpec& command);

// "tarnexctl probe [OPTIONS] LIBRARY..."
std::string UsageLine(const CommandSpec& command);

// "-p, --plugin NAME"
std::string OptionHeading(const OptionSpec& option);

}  // namespace tarnexctl
