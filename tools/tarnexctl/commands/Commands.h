#pragma once

// One function per command; each stands in a file of its own.

#include "frame/Command.h"

namespace tarnexctl {

CommandSpec ListCommand();
CommandSpec ListChildCommand();
CommandSpec InfoCommand();
CommandSpec InfoChildCommand();
CommandSpec ProbeCommand();
CommandSpec ProbeChildCommand();
CommandSpec DumpCommand();
CommandSpec GraphCommand();
CommandSpec PlotCommand();
CommandSpec ArchiveCommand();
CommandSpec DoctorCommand();
CommandSpec OwnershipChildCommand();
CommandSpec LogCommand();
CommandSpec CheckCommand();
CommandSpec ExplainCommand();
CommandSpec CompletionCommand();
CommandSpec ManPageCommand();
CommandSpec HelpCommand();

}  // namespace tarnexctl
