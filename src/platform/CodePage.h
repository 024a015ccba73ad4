#pragma once

// Conversion between wide texts and the system's narrow code pages. Neither direction fails on a
// character that the target lacks: it is replaced. Any thread.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

enum class CodePage { kAnsi = 1, kUtf8 = 2 };

std::string ToNarrow(std::wstring_view text, CodePage page);
std::wstring ToWide(std::string_view text, CodePage page);

// The conversion by number that callers choose at run time: 1 is the ANSI code page, 2 is UTF-8, 3
// yields an empty text, and any other number counts as 1.
inline std::string WideToNarrow(std::wstring_view text, std::uint32_t mode) {
    if (text.empty() || mode == 3) return {};
    return ToNarrow(text, mode == 2 ? CodePage::kUtf8 : CodePage::kAnsi);
}

// UTF-16 code units, as settings and the trace block hold them, to wide text and back. Halves of
// surrogate pairs go through as they are.
std::wstring FromUtf16(std::u16string_view text);

// Fills `buffer` with the first `capacity` code units of `text` and returns how many there are.
// Allocates nothing.
std::size_t ToUtf16(std::wstring_view text, char16_t* buffer, std::size_t capacity);

// Converts UTF-16 code units into `buffer` (no terminator) and returns the bytes written. Stops
// before the first character that does not fit whole. Allocates nothing.
std::size_t Utf16ToAnsi(const char16_t* text, std::size_t units, char* buffer,
                        std::size_t capacity);

}  // namespace platform
