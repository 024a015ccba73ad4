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

// The text in lines of at most `width` columns, each behind `indent`.
std::string Wrapped(const std::string& text, const std::string& indent, std::size_t width = 80);

}  // namespace tarnexctl
