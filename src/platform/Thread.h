#pragma once

// The calling thread and process, and the clock. Any thread. Nothing here allocates.

#include <cstdint>

namespace platform {

std::uint32_t CurrentThreadId();
std::uint32_t CurrentProcessId();
void SleepMs(unsigned milliseconds);

// The performance counter in 100-nanosecond units.
std::int64_t CounterTime();

// Has `abandon` called in a child process that was forked off this one, where no other thread
// lives on. Does nothing on systems that do not fork.
void OnFork(void (*abandon)());

}  // namespace platform
