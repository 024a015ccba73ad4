#pragma once

// Where a command's result goes: to standard output, or whole or not at all to the file of
// -o/--output.

#include <string>
#include <string_view>

#include "frame/Command.h"

namespace tarnexctl {

// "-o, --output FILE"
OptionSpec OutputOption(const std::string& help);

// The file that --output names; a usage Failure when it is the file `input`. Empty when there is no
// such option.
std::string OutputName(const Arguments& arguments, const std::string& input);

// Puts a text (UTF-8) to standard output, or into the file of --output. A Failure when the file
// cannot be written; an older one of its name is still there then.
void WriteResult(const Arguments& arguments, Session& session, const std::string& input,
                 std::string_view text);

// Puts any bytes into the file, with the same promise.
void WriteResultFile(const std::string& name, std::string_view bytes);

// A Failure when the folder that the file would be in does not exist.
void RequireFolderOf(const std::string& name);

// The path in the form that the library's own operations take. A Failure when it would mean another
// file there: one whose name holds a backslash or is no text, where the system allows such names.
std::wstring LibraryPath(const std::string& name);

}  // namespace tarnexctl
