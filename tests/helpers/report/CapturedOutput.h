#pragma once

// What a test program traced and wrote to the debugger output. Any thread.

#include <string>
#include <vector>

namespace captured {

// The texts since the last call, oldest first, as they were handed to trace messages.
std::vector<std::wstring> TakeTraced();

// The same for the debugger output.
std::vector<std::string> TakeDebugged();

// Called for each traced text before it is kept; empty for none. Set while no thread traces.
void OnTrace(void (*callback)());

}  // namespace captured
