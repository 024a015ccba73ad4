#include "tracer_process/HostSystem.h"

#include <dlfcn.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "platform/NativePath.h"
#include "platform/Thread.h"

namespace trace_host {
namespace {

int Niceness(pid_t thread) {
    return getpriority(PRIO_PROCESS, static_cast<id_t>(thread));
}

}  // namespace

// The product writes there itself when the environment says so.
void CaptureDebugOutput() {
    setenv("TARNEX_DEBUG_OUTPUT", "1", 1);
}

bool IsLoaded(const std::wstring& file) {
    void* module = dlopen(platform::NativePath(file).c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (module != nullptr) dlclose(module);
    return module != nullptr;
}

void ExitProcessNow(int code) {
    std::exit(code);
}

bool CanRunBelowOwn() {
    const int own = Niceness(gettid());
    int lowered = own;
    std::thread([own, &lowered] {
        static_cast<void>(setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), own + 1));
        lowered = Niceness(gettid());
    }).join();
    return lowered == own + 1;
}

// The tracer's thread is the only other one.
int PriorityBelowOwn(std::uint64_t) {
    const int own = Niceness(gettid());
    int lowest = own;
    for (int i = 0; i < 20'000 && lowest == own; ++i) {
        for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
            const auto id = static_cast<pid_t>(std::stoul(task.path().filename().string()));
            lowest = std::max(lowest, Niceness(id));
        }
        if (lowest == own) platform::SleepMs(1);
    }
    return lowest - own;
}

}  // namespace trace_host
