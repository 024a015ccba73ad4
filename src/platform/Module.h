#pragma once

// Loading libraries. Paths may be of any length; a backslash separates folders on every system.

#include <string>

namespace platform {

// Loads the library at `path`, its dependencies first searched for in its own folder. Null on
// failure, about which the system asks nobody anything.
void* LoadModule(const std::wstring& path);

// The exported function or variable of that name; null when there is none.
void* ResolveSymbol(void* module, const std::string& name);

// Full path of the running program.
std::wstring ExecutablePath();

}  // namespace platform
