#pragma once

// Running a program and waiting for its end, for code that must not be run in this process. Texts
// are UTF-8.

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace platform {

enum class ChildEnd {
    kExited,      // by itself, with `code`
    kCrashed,     // by a signal or an exception, `reason` says which
    kTimedOut,    // it was ended, with every process that it had started
    kNotStarted,  // `reason` says why
};

struct ChildRequest {
    std::string program;  // a path; no search
    std::vector<std::string> arguments;
    std::vector<std::pair<std::string, std::string>> environment;  // added to this process's own
    std::uint32_t timeoutMs = 60000;
    std::size_t outputLimit = 16u << 20;  // of each stream; what comes after it is dropped
};

struct ChildResult {
    ChildEnd end = ChildEnd::kNotStarted;
    std::uint32_t code = 0;  // exit code, signal number or exception code
    std::string reason;
    std::string output;
    std::string error;
};

// Runs the program with an empty standard input and reads what it writes. Blocks until it has
// ended. Any thread.
ChildResult RunChild(const ChildRequest& request);

// Called in a process that runs code which may crash: no dialog, no debugger, no core file, no
// sanitizer's handler, so that the parent learns of it at once.
void CrashQuietly();

// Ends this process at once: no destructors, no exit handlers, no library's farewell.
[[noreturn]] void EndProcess(int code);

}  // namespace platform
