#pragma once

// The process's tracer, as every module of the process sees it in the block.

#include <string_view>

#include "helpers/tracer/TraceBuffer.h"

namespace helpers {

inline constexpr std::uint32_t kDefaultLevel = 2;  // ordinary information

class Tracer {
public:
    explicit Tracer(TracerLayout& layout) : layout_(layout) {}

    // Any thread. Hands the first kMaxMessageUnits code units of `text` to the log when the tracer
    // runs and accepts the level, else to the debugger output when it is mirrored there. Takes no
    // lock and allocates nothing for the log; waits up to about a second for room, then drops.
    void Write(std::uint32_t level, const std::wstring& text);

    // Whether a text of that level would go anywhere now.
    bool WouldWrite(std::uint32_t level) const {
        return (IsRunning() && Accepts(level)) || LogsToOutput();
    }

    bool IsRunning() const { return Flag(layout_.running); }
    bool IsClosed() const { return Flag(layout_.closed); }
    bool LogsToOutput() const { return Flag(layout_.logToOutput); }
    bool Accepts(std::uint32_t level) const;

    std::uint32_t Current() const;
    TraceBuffer Buffer(std::uint32_t index) const {
        return TraceBuffer(layout_.buffers[index & 1]);
    }

    // Makes the other buffer the current one if it is empty and nobody else has switched. Only
    // then: so a thread's messages stay in order, since what lies in the other buffer is written
    // first.
    void SwitchFrom(std::uint32_t index);

    // Whether a thread is in SwitchFrom; for one that died there, the log's own thread ends it.
    bool IsSwitching() const;
    void EndSwitching();

    // Whether no module runs the tracer any more: who ran it closed it and left.
    bool IsLeftBehind() const;

    // Whether a foreign block can hold a tracer at all.
    bool IsPlausible() const;

    // For the module that runs the tracer; others only read.
    void SetRunning(bool on) { Set(layout_.running, on); }
    void SetClosed(bool on) { Set(layout_.closed, on); }
    void SetLogToOutput(bool on) { Set(layout_.logToOutput, on); }
    void SetLevelMask(std::uint32_t mask);
    void SetHandles(std::uint64_t stopEvent, std::uint64_t thread);
    void InitializeBuffers();

private:
    // acquire and release; pair with each other, so that whoever sees a flag sees what was set up
    // before it.
    static bool Flag(std::uint8_t& flag) {
        return std::atomic_ref<std::uint8_t>(flag).load(std::memory_order_acquire) != 0;
    }
    static void Set(std::uint8_t& flag, bool on) {
        std::atomic_ref<std::uint8_t>(flag).store(on ? 1 : 0, std::memory_order_release);
    }
    void Append(const char16_t* text, std::uint32_t units);
    bool TryBothBuffers(const char16_t* text, std::uint32_t units);

    TracerLayout& layout_;
};

}  // namespace helpers
