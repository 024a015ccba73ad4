#include "platform/CodePage.h"

#include <cstring>

#include "platform/posix/Utf.h"

namespace platform {
namespace {

// Texts are converted in blocks as long as each character of a block fits into one unit of the
// target, which is how nearly all texts are; compilers make a few instructions of a block.
constexpr std::size_t kBlock = 8;

template <class To, class From>
bool ConvertBlock(const From* from, To* to, char32_t largest) {
    bool fits = true;
    for (std::size_t i = 0; i != kBlock; ++i) fits &= static_cast<char32_t>(from[i]) <= largest;
    if (!fits) return false;
    for (std::size_t i = 0; i != kBlock; ++i) to[i] = static_cast<To>(from[i]);
    return true;
}

}  // namespace

// Every narrow code page of this system is UTF-8.

std::string ToNarrow(std::wstring_view text, CodePage) {
    std::string narrow;
    narrow.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        char bytes[4];
        const char32_t character = NextCharacter(text.data(), text.size(), position);
        narrow.append(bytes, EncodeUtf8(character, bytes));
    }
    return narrow;
}

std::wstring ToWide(std::string_view text, CodePage) {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        wide.push_back(static_cast<wchar_t>(NextUtf8(text.data(), text.size(), position)));
    }
    return wide;
}

std::wstring FromUtf16(std::u16string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const char16_t unit = text[position];
        const char32_t character = NextCharacter(text.data(), text.size(), position);
        wide.push_back(static_cast<wchar_t>(character == kReplacement ? unit : character));
    }
    return wide;
}

std::size_t ToUtf16(std::wstring_view text, char16_t* buffer, std::size_t capacity) {
    std::size_t count = 0;
    for (std::size_t position = 0; position < text.size() && count < capacity;) {
        if (text.size() - position >= kBlock && capacity - count >= kBlock &&
            ConvertBlock(text.data() + position, buffer + count, 0xFFFF)) {
            position += kBlock;
            count += kBlock;
            continue;
        }
        auto character = static_cast<char32_t>(text[position++]);
        if (character > 0x10FFFF) character = kReplacement;
        if (character > 0xFFFF) {
            buffer[count++] = static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            if (count == capacity) break;
            character = 0xDC00 + ((character - 0x10000) & 0x3FF);
        }
        buffer[count++] = static_cast<char16_t>(character);
    }
    return count;
}

std::size_t Utf16ToAnsi(const char16_t* text, std::size_t units, char* buffer,
                        std::size_t capacity) {
    std::size_t written = 0;
    for (std::size_t position = 0; position < units;) {
        if (units - position >= kBlock && capacity - written >= kBlock &&
            ConvertBlock(text + position, buffer + written, 0x7F)) {
            position += kBlock;
            written += kBlock;
            continue;
        }
        char bytes[4];
        const std::size_t length = EncodeUtf8(NextCharacter(text, units, position), bytes);
        if (length > capacity - written) break;
        std::memcpy(buffer + written, bytes, length);
        written += length;
    }
    return written;
}

}  // namespace platform
