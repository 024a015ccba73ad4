#pragma once

// UTF-8, UTF-16 and UTF-32, one character at a time. What is no character reads as kReplacement.

#include <cstddef>
#include <cstdint>

namespace platform {

inline constexpr char32_t kReplacement = 0xFFFD;

inline bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
inline bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Reads the character at `position` of a text of 16-bit or 32-bit units and moves behind it.
template <typename Unit>
char32_t NextCharacter(const Unit* text, std::size_t units, std::size_t& position) {
    const auto first = static_cast<char32_t>(text[position++]);
    if (IsHighSurrogate(first) && position < units) {
        const auto second = static_cast<char32_t>(text[position]);
        if (IsLowSurrogate(second)) {
            ++position;
            return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
        }
    }
    const bool surrogate = IsHighSurrogate(first) || IsLowSurrogate(first);
    return surrogate || first > 0x10FFFF ? kReplacement : first;
}

// Writes the character's UTF-8 bytes and returns how many (1 to 4).
inline std::size_t EncodeUtf8(char32_t character, char* bytes) {
    const auto tail = [character](int shift) {
        return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    };
    if (character < 0x80) {
        bytes[0] = static_cast<char>(character);
        return 1;
    }
    if (character < 0x800) {
        bytes[0] = static_cast<char>(0xC0 | (character >> 6));
        bytes[1] = tail(0);
        return 2;
    }
    if (character < 0x10000) {
        bytes[0] = static_cast<char>(0xE0 | (character >> 12));
        bytes[1] = tail(6);
        bytes[2] = tail(0);
        return 3;
    }
    bytes[0] = static_cast<char>(0xF0 | (character >> 18));
    bytes[1] = tail(12);
    bytes[2] = tail(6);
    bytes[3] = tail(0);
    return 4;
}

// Reads the UTF-8 character at `position` and moves behind it; over one byte when it is malformed.
inline char32_t NextUtf8(const char* text, std::size_t bytes, std::size_t& position) {
    const auto lead = static_cast<std::uint8_t>(text[position++]);
    if (lead < 0x80) return lead;
    const std::size_t length = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || bytes - position < length) return kReplacement;
    char32_t character = lead & (0x3F >> length);
    for (std::size_t i = 0; i < length; ++i) {
        const auto next = static_cast<std::uint8_t>(text[position + i]);
        if ((next & 0xC0) != 0x80) return kReplacement;
        character = (character << 6) | (next & 0x3F);
    }
    static constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    const bool surrogate = IsHighSurrogate(character) || IsLowSurrogate(character);
    if (character < kSmallest[length] || character > 0x10FFFF || surrogate) return kReplacement;
    position += length;
    return character;
}

}  // namespace platform
