#pragma once

// The few things this host asks of the operating system.

#include <filesystem>
#include <vector>

#include "tarnex/ITarnex.h"

namespace host {

using GetTarnexFunction = decltype(&GetTarnex);

extern const char* const kLibraryFile;   // the plug-in manager library
extern const char* const kPluginSuffix;  // of plug-in libraries

std::filesystem::path ProgramFolder();

// The program's arguments without its name, whatever letters they hold.
std::vector<std::filesystem::path> Arguments(int count, char** arguments);

// Makes UTF-8 on standard output readable.
void PrepareOutput();

// Null when the library does not load or has no such function.
GetTarnexFunction LoadTarnex(const std::filesystem::path& file);

// Takes the library out of the process again; whatever is still buffered for the log is then in it.
// Every pointer that came from the library must be gone.
void UnloadTarnex();

// Turns the trace log on, with every level, for this user (registry) or this process (settings
// file). Before the library is loaded; false when the settings cannot be written.
bool EnableTraceLog();

// Lets scripts that are created by path be written beside themselves as archives, or stops that;
// for this user or this process, too. False when the settings cannot be written.
bool WriteArchives(bool on);

}  // namespace host
