#pragma once

// The one place of a module through which its messages reach the process's tracer.

#include <cstdint>
#include <string>

#include "helpers/tracer/Tracer.h"

namespace helpers {

// Loader thread. Lets the module's messages go to `tracer` from now on. Caller keeps the block
// mapped until WithdrawTracer has returned.
void PublishTracer(TracerLayout& tracer);

// Loader thread. Lets them go nowhere again, and waits until no thread is inside the tracer any
// more; but not for threads that died there.
void WithdrawTracer();

// In a forked child: as WithdrawTracer, but at once; the threads are the parent's.
void AbandonTracer();

bool HasTracer();

// Any thread. Whether the module has a tracer that does not drop what is of that level.
bool IsTraced(std::uint32_t level);

// Any thread. Dropped when the module has no tracer.
void WriteToTracer(std::uint32_t level, const std::wstring& text);

}  // namespace helpers
