#pragma once

// What the host process asks of the system beyond loading libraries.

#include <cstdint>
#include <string>

namespace trace_host {

// From here on the debugger output of this process goes to its standard error.
void CaptureDebugOutput();

// Whether the library of that file is still in the process.
bool IsLoaded(const std::wstring& file);

// Ends the process from inside, as a host that calls the system itself.
[[noreturn]] void ExitProcessNow(int code);

// Whether the system lets a thread run one step below the calling one: not when that is the lowest
// step already.
bool CanRunBelowOwn();

// How many steps the tracer's thread, by the handle in its block, runs below the calling one. Waits
// for a thread that lowers itself; 0 when it never does.
int PriorityBelowOwn(std::uint64_t thread);

}  // namespace trace_host
