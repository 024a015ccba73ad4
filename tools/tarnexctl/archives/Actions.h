#pragma once

// What "tarnexctl archive" does, one function and file for each action.

#include <string>

#include "frame/Arguments.h"
#include "frame/Session.h"

namespace tarnexctl {

// Writes the archive of the script `file`, beside it or to --output.
ExitCode CompileArchive(const std::string& file, const Arguments& arguments, Session& session);

// Shows the header of the archive `file` and what each field holds.
ExitCode InspectArchive(const std::string& file, const Arguments& arguments, Session& session);

// Looks for the first bad byte of the archive `file`, and for what no library would write.
ExitCode VerifyArchive(const std::string& file, const Arguments& arguments, Session& session);

// Turns the archive `file` back into a script, to standard output or --output.
ExitCode ExtractArchive(const std::string& file, const Arguments& arguments, Session& session);

}  // namespace tarnexctl
