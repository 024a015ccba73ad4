#include "helpers/tracer/service/LineFormatter.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "platform/CodePage.h"
#include "platform/DebugOutput.h"

namespace helpers {
namespace {

constexpr std::int64_t kUnitsPerSecond = 10'000'000;
constexpr std::int64_t kUnitsPerMs = 10'000;

// The number in decimal, filled up on its left to `width`.
char* PutNumber(char* out, std::int64_t number, std::ptrdiff_t width, char fill) {
    char digits[24];
    const char* end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    for (std::ptrdiff_t missing = width - (end - digits); missing > 0; --missing) *out++ = fill;
    return std::copy(static_cast<const char*>(digits), end, out);
}

// "%06d:%03d [%5d] ". Done by hand: the C library's formatter may wait for a lock that a dead
// thread holds when the process ends.
char* PutFrame(char* out, std::int64_t age, std::uint32_t threadId) {
    out = PutNumber(out, age / kUnitsPerSecond, 6, '0');
    *out++ = ':';
    out = PutNumber(out, age % kUnitsPerSecond / kUnitsPerMs, 3, '0');
    *out++ = ' ';
    *out++ = '[';
    out = PutNumber(out, static_cast<std::int32_t>(threadId), 5, ' ');
    *out++ = ']';
    *out++ = ' ';
    return out;
}

[[noreturn]] void FatalLongLine() {
    platform::DebugOutput("Tracer: a formatted line is too long\n");
    std::abort();
}

}  // namespace

std::size_t FormatLine(LineBuffer& line, std::int64_t age, std::uint32_t threadId,
                       std::string_view text) {
    char* out = PutFrame(line, std::max<std::int64_t>(age, 0), threadId);
    const std::size_t ending = text.ends_with('\n') ? 0 : 1;
    const std::size_t length = static_cast<std::size_t>(out - line) + text.size() + ending;
    if (length > kLongestLine) FatalLongLine();
    out = std::copy(text.begin(), text.end(), out);
    if (ending != 0) *out++ = '\n';
    *out = '\0';
    return length;
}

std::size_t FormatRecord(LineBuffer& line, const Record& record, std::int64_t now) {
    // The record's text may lie unaligned for no unit type: at an even address, as every record.
    char text[kLongestText];
    const std::size_t bytes =
        platform::Utf16ToAnsi(record.Text(), record.Length(), text, sizeof text);
    return FormatLine(line, now - record.Time(), record.ThreadId(), {text, bytes});
}

}  // namespace helpers
