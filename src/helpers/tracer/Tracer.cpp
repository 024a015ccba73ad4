#include "helpers/tracer/Tracer.h"

#include <string>

#include "platform/CodePage.h"
#include "platform/DebugOutput.h"
#include "platform/Thread.h"

namespace helpers {
namespace {

constexpr int kAppendRounds = 1000;
constexpr unsigned kRoundMs = 1;

}  // namespace

void Tracer::Write(std::uint32_t level, const std::wstring& text) {
    if (IsRunning() && Accepts(level)) {
        char16_t units[kMaxMessageUnits];
        auto length = static_cast<std::uint32_t>(platform::ToUtf16(text, units, kMaxMessageUnits));
        if (length == 0) {
            units[length++] = u'\n';  // an empty text makes the same line
        }
        Append(units, length);
    } else if (LogsToOutput()) {
        platform::DebugOutput(text.c_str());
    }
}

void Tracer::Append(const char16_t* text, std::uint32_t units) {
    for (int round = 0; round < kAppendRounds; ++round) {
        if (IsClosed() || TryBothBuffers(text, units)) return;
        platform::SleepMs(kRoundMs);
    }
}

bool Tracer::TryBothBuffers(const char16_t* text, std::uint32_t units) {
    const std::uint32_t first = Current();
    if (Buffer(first).Append(text, units)) return true;
    SwitchFrom(first);
    const std::uint32_t second = Current();
    return second != first && Buffer(second).Append(text, units);
}

bool Tracer::Accepts(std::uint32_t level) const {
    // relaxed; a lone setting.
    return (level &
            std::atomic_ref<std::uint32_t>(layout_.levelMask).load(std::memory_order_relaxed)) != 0;
}

std::uint32_t Tracer::Current() const {
    // acquire; pairs with the release in SwitchFrom.
    return std::atomic_ref<std::uint32_t>(layout_.current).load(std::memory_order_acquire) & 1;
}

void Tracer::SwitchFrom(std::uint32_t index) {
    // One thread at a time, and nobody waits: a thread that was held up between looking at the
    // other buffer and switching would else switch to a buffer that was filled meanwhile. acquire
    // and release; pair with each other.
    std::atomic_ref<std::uint8_t> switching(layout_.switching);
    if (switching.exchange(1, std::memory_order_acquire) != 0) return;
    if (Current() == index && Buffer(1 - index).IsEmpty()) {
        // release; pairs with the acquire in Current.
        std::atomic_ref<std::uint32_t>(layout_.current).store(1 - index, std::memory_order_release);
    }
    switching.store(0, std::memory_order_release);
}

bool Tracer::IsSwitching() const {
    // relaxed; a hint.
    return std::atomic_ref<std::uint8_t>(layout_.switching).load(std::memory_order_relaxed) != 0;
}

void Tracer::EndSwitching() {
    std::atomic_ref<std::uint8_t>(layout_.switching).store(0, std::memory_order_release);
}

bool Tracer::IsPlausible() const {
    const auto isFlag = [](std::uint8_t value) { return value <= 1; };
    if (!isFlag(layout_.logToOutput) || !isFlag(layout_.running) || !isFlag(layout_.closed)) {
        return false;
    }
    // relaxed; whatever the moment, a tracer's fields stay within these bounds.
    if (std::atomic_ref<std::uint32_t>(layout_.current).load(std::memory_order_relaxed) > 1) {
        return false;
    }
    constexpr std::int32_t kMostUsed = 1 << 30;
    for (BufferLayout& buffer : layout_.buffers) {
        const std::int32_t used =
            std::atomic_ref<std::int32_t>(buffer.used).load(std::memory_order_relaxed);
        if (used < 0 || used > kMostUsed) return false;
    }
    return true;
}

void Tracer::SetLevelMask(std::uint32_t mask) {
    std::atomic_ref<std::uint32_t>(layout_.levelMask).store(mask, std::memory_order_relaxed);
}

void Tracer::SetHandles(std::uint64_t stopEvent, std::uint64_t thread) {
    std::memcpy(layout_.stopEvent, &stopEvent, sizeof stopEvent);
    std::memcpy(layout_.thread, &thread, sizeof thread);
}

bool Tracer::IsLeftBehind() const {
    // A tracer that is only disabled has its event all the same.
    std::uint64_t stopEvent;
    std::memcpy(&stopEvent, layout_.stopEvent, sizeof stopEvent);
    return IsClosed() && stopEvent == 0;
}

void Tracer::InitializeBuffers() {
    for (BufferLayout& buffer : layout_.buffers) TraceBuffer(buffer).Initialize();
    std::atomic_ref<std::uint32_t>(layout_.current).store(0, std::memory_order_release);
}

}  // namespace helpers
