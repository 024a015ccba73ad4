#pragma once

// Starting a process where one start in thousands fails.

#include <windows.h>

namespace platform {

// Calls `create`, which calls CreateProcess, and calls it again when a process was given up: up to
// three times in all. Wine needs one page at a fixed place, and where a process's heap, whose place
// is random, has it already, that process is given up with ERROR_INTERNAL_ERROR.
// Returns what the last call returned and leaves the error that it left.
template <typename Create>
BOOL StartProcess(const Create& create) {
    constexpr int kTries = 3;
    for (int tries = 1;; ++tries) {
        const BOOL started = create();
        if (started != 0 || GetLastError() != ERROR_INTERNAL_ERROR || tries == kTries) {
            return started;
        }
    }
}

}  // namespace platform
