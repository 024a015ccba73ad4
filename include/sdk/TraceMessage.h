#pragma once

// One message to the trace log: open it, append, and let it go; its destructor hands the text to
// the process's tracer. Any thread; one thread per message. Never throws, never blocks for longer
// than the tracer's bounded wait; a message is dropped when there is no tracer, or tracing is off.

#include <cstdint>
#include <string>
#include <string_view>

namespace helpers {

class TraceMessage {
public:
    // Level 0 counts as 2, the level of ordinary information.
    explicit TraceMessage(std::uint32_t level = 0);
    ~TraceMessage();
    TraceMessage(const TraceMessage&) = delete;
    TraceMessage& operator=(const TraceMessage&) = delete;

    TraceMessage& Append(std::string_view text);  // ANSI code page
    TraceMessage& Append(std::wstring_view text);

private:
    std::uint32_t level_;
    std::int32_t reserved_ = -1;
    std::wstring text_;
};

}  // namespace helpers
