#pragma once

// Manual-reset events. A handle is valid in every module of the process; 0 is none. Any thread.

#include <cstdint>

namespace platform {

using EventHandle = std::uint64_t;

// Not signalled; 0 when the system refuses.
EventHandle CreateManualEvent();
void SignalEvent(EventHandle event);
// True when it was signalled within that time.
bool WaitForEvent(EventHandle event, unsigned milliseconds);
void CloseEvent(EventHandle event);

}  // namespace platform
