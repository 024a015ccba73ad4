// A host that does what its arguments say, one after another: "load:trace_service",
// "say:trace_service:2:hello". Its answers go to standard output, the debugger output to standard
// error. Sees the tracer through libraries alone, as a host does.

#include <cstdio>
#include <string>
#include <vector>

#include "platform/ChildProcess.h"
#include "tracer_process/Commands.h"
#include "tracer_process/HostSystem.h"

namespace {

std::vector<std::string> Split(const std::string& text) {
    std::vector<std::string> words(1);
    for (const char character : text) {
        if (character == ':') {
            words.emplace_back();
        } else {
            words.back() += character;
        }
    }
    return words;
}

}  // namespace

int main(int argc, char** argv) {
    platform::CrashQuietly();
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    trace_host::CaptureDebugOutput();
    for (int i = 1; i < argc; ++i) {
        if (!trace_host::RunCommand(Split(argv[i]))) {
            std::printf("unknown command %s\n", argv[i]);
            return 100;
        }
    }
    return 0;
}
