#pragma once

#include <functional>

// Runs the work on a thread of 256 KiB of stack: recursion over input does not survive it. Where
// there is no such thread the program ends.
void RunOnSmallStack(const std::function<void()>& work);
