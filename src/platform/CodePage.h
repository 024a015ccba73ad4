#pragma once

// Conversion between wide texts and the system's narrow code pages. Neither direction fails on a
// character that the target lacks: it is replaced.

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

enum class CodePage { kAnsi = 1, kUtf8 = 2 };

std::string ToNarrow(std::wstring_view text, CodePage page);
std::wstring ToWide(std::string_view text, CodePage page);

// Converts UTF-16 code units into `buffer` (no terminator) and returns the bytes written. Stops
// before the first character that does not fit whole. Allocates nothing.
std::size_t Utf16ToAnsi(const char16_t* text, std::size_t units, char* buffer,
                        std::size_t capacity);

}  // namespace platform
