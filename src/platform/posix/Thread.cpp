#include "platform/Thread.h"

#include <pthread.h>
#include <time.h>
#include <unistd.h>

namespace platform {
namespace {

thread_local std::uint32_t t_threadId = 0;  // asking the kernel costs more than a whole message

void (*g_abandon)() = nullptr;

void AfterFork() {
    t_threadId = 0;
    if (g_abandon != nullptr) g_abandon();
}

}  // namespace

std::uint32_t CurrentThreadId() {
    if (t_threadId == 0) t_threadId = static_cast<std::uint32_t>(gettid());
    return t_threadId;
}

std::uint32_t CurrentProcessId() {
    return static_cast<std::uint32_t>(getpid());
}

void SleepMs(unsigned milliseconds) {
    const timespec time{static_cast<time_t>(milliseconds / 1000),
                        static_cast<long>(milliseconds % 1000) * 1'000'000};
    nanosleep(&time, nullptr);
}

std::int64_t CounterTime() {
    timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::int64_t{time.tv_sec} * 10'000'000 + time.tv_nsec / 100;
}

void OnFork(void (*abandon)()) {
    g_abandon = abandon;
    pthread_atfork(nullptr, nullptr, AfterFork);
}

}  // namespace platform
