#include "platform/CodePage.h"

#include <windows.h>

#include <algorithm>
#include <climits>

namespace platform {
namespace {

UINT NativePage(CodePage page) {
    return page == CodePage::kUtf8 ? CP_UTF8 : CP_ACP;
}

// The system counts in int; longer texts are converted up to there.
template <typename View>
int Length(const View& text) {
    return static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX / 4));
}

}  // namespace

std::string ToNarrow(std::wstring_view text, CodePage page) {
    if (text.empty()) return {};
    const UINT native = NativePage(page);
    const int units = Length(text);
    const int bytes =
        WideCharToMultiByte(native, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(std::max(bytes, 0)), '\0');
    WideCharToMultiByte(native, 0, text.data(), units, narrow.data(), bytes, nullptr, nullptr);
    return narrow;
}

std::wstring ToWide(std::string_view text, CodePage page) {
    if (text.empty()) return {};
    const UINT native = NativePage(page);
    const int bytes = Length(text);
    const int units = MultiByteToWideChar(native, 0, text.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(std::max(units, 0)), L'\0');
    MultiByteToWideChar(native, 0, text.data(), bytes, wide.data(), units);
    return wide;
}

std::wstring FromUtf16(std::u16string_view text) {
    return {reinterpret_cast<const wchar_t*>(text.data()), text.size()};
}

std::size_t ToUtf16(std::wstring_view text, char16_t* buffer, std::size_t capacity) {
    const std::size_t count = std::min(text.size(), capacity);
    std::copy_n(text.data(), count, buffer);
    return count;
}

std::size_t Utf16ToAnsi(const char16_t* text, std::size_t units, char* buffer,
                        std::size_t capacity) {
    const auto* wide = reinterpret_cast<const wchar_t*>(text);
    const auto convert = [](const wchar_t* from, std::size_t count, char* to, std::size_t room) {
        if (count == 0 || room == 0) return std::size_t{0};
        const int bytes = WideCharToMultiByte(
            CP_ACP, 0, from, static_cast<int>(std::min<std::size_t>(count, INT_MAX)), to,
            static_cast<int>(std::min<std::size_t>(room, INT_MAX)), nullptr, nullptr);
        return static_cast<std::size_t>(std::max(bytes, 0));
    };
    if (const std::size_t whole = convert(wide, units, buffer, capacity)) return whole;
    // It does not fit: one character after another, as far as they go.
    std::size_t written = 0;
    for (std::size_t position = 0; position < units;) {
        const bool pair =
            position + 1 < units && IS_SURROGATE_PAIR(wide[position], wide[position + 1]);
        const std::size_t count = pair ? 2 : 1;
        const std::size_t bytes =
            convert(wide + position, count, buffer + written, capacity - written);
        if (bytes == 0) break;
        written += bytes;
        position += count;
    }
    return written;
}

}  // namespace platform
