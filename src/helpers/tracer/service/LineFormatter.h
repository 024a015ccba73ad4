#pragma once

// The lines of the log. Writer thread. Allocates nothing and takes no lock.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "helpers/tracer/Record.h"

namespace helpers {

inline constexpr std::size_t kLineBufferBytes = 2304;
inline constexpr std::size_t kLongestLine = kLineBufferBytes - 1;
// "%06d:%03d [%5d] " with the longest numbers there are, and "\n".
inline constexpr std::size_t kLongestFrame = 48;
inline constexpr std::size_t kLongestText = kLongestLine - kLongestFrame;

using LineBuffer = char[kLineBufferBytes];

// "%06d:%03d " of the age's seconds and milliseconds, "[%5d] " of the thread, the text, and "\n" if
// it does not end with one; a 0 behind it. Returns the length. A line longer than kLongestLine ends
// the process.
std::size_t FormatLine(LineBuffer& line, std::int64_t age, std::uint32_t threadId,
                       std::string_view text);

// The line of a record as it is at the time `now`. The text is converted to the ANSI code page and
// cut at a character's boundary after kLongestText bytes.
std::size_t FormatRecord(LineBuffer& line, const Record& record, std::int64_t now);

}  // namespace helpers
