#pragma once

// One message to the trace log: open it, append, and let it go; its destructor hands the text to
// the process's tracer. Any thread; one thread per message. Closing never throws and never blocks
// for longer than the tracer's bounded wait; the message is dropped when there is no tracer, or
// tracing is off.

#include <cstdint>
#include <string>
#include <string_view>

namespace helpers {

// What producers may put before a text. The messages of this library carry none.
inline constexpr wchar_t kErrorPrefix[] = L"Error: ";
inline constexpr wchar_t kInfoPrefix[] = L"Info: ";
inline constexpr wchar_t kWarningPrefix[] = L"Warning: ";

class TraceMessage {
public:
    // Level 0 counts as 2, the level of ordinary information. Opening a message resets the two
    // formatting settings of the module.
    explicit TraceMessage(std::uint32_t level = 0);
    ~TraceMessage();
    TraceMessage(const TraceMessage&) = delete;
    TraceMessage& operator=(const TraceMessage&) = delete;

    // Whether a message of that level that was opened now could reach a log or the debugger output.
    // Also puts the formatting settings back, as opening one does: whoever asks first need not open
    // a message that nobody hears.
    static bool IsHeard(std::uint32_t level = 0);

    // A piece for which there is no memory is left out.
    TraceMessage& Append(std::string_view text) noexcept;  // ANSI code page
    TraceMessage& Append(std::wstring_view text) noexcept;

    // The two formatting settings that every new message puts back to 6 and 10.
    static std::int32_t FormatPrecision();
    static std::int32_t FormatRadix();
    static void SetFormat(std::int32_t precision, std::int32_t radix);

private:
    std::uint32_t level_;
    std::int32_t reserved_ = -1;
    std::wstring text_;
};

}  // namespace helpers
