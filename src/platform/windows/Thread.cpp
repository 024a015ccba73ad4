#include "platform/Thread.h"

#include <windows.h>

namespace platform {

std::uint32_t CurrentThreadId() {
    return GetCurrentThreadId();
}

std::uint32_t CurrentProcessId() {
    return GetCurrentProcessId();
}

void SleepMs(unsigned milliseconds) {
    Sleep(milliseconds);
}

std::int64_t CounterTime() {
    constexpr std::int64_t kUnitsPerSecond = 10'000'000;
    LARGE_INTEGER counter;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    // In two parts: the product of the whole would run over.
    const std::int64_t seconds = counter.QuadPart / frequency.QuadPart;
    const std::int64_t rest = counter.QuadPart % frequency.QuadPart;
    return seconds * kUnitsPerSecond + rest * kUnitsPerSecond / frequency.QuadPart;
}

void OnFork(void (*)()) {}

}  // namespace platform
