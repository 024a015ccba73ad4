#pragma once

#include <string>

namespace platform {

// Writes a text to the debugger output. Any thread. Never fails visibly.
void DebugOutput(const char* text);
void DebugOutput(const wchar_t* text);

}  // namespace platform
