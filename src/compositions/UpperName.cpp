#include "compositions/UpperName.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/CharacterCase.h"

namespace compositions {
namespace {

wchar_t UpperAscii(wchar_t character) {
    const bool isLower = character >= L'a' && character <= L'z';
    return isLower ? static_cast<wchar_t>(character - (L'a' - L'A')) : character;
}

// Writes the upper-case form of the ASCII characters; answers whether there were only those.
bool CopyUpperAscii(std::wstring_view from, wchar_t* to) {
    wchar_t seen = 0;
    for (std::size_t i = 0; i < from.size(); ++i) {
        seen |= from[i];
        to[i] = UpperAscii(from[i]);
    }
    return (seen & ~0x7F) == 0;
}

// A number that is ordered as the character's 16-bit code units are.
std::uint32_t OrderOf(wchar_t character) {
    constexpr std::uint32_t kFirstOfTwoUnits = 0x10000;
    constexpr std::uint32_t kFirstSurrogate = 0xD800;
    const auto code = static_cast<std::uint32_t>(character);
    if (code < kFirstOfTwoUnits) return code << 10;
    // Where characters are wider than that: the first unit, then what the second one adds.
    return (kFirstSurrogate << 10) + (code - kFirstOfTwoUnits);
}

std::wstring_view UpToZero(std::wstring_view text) {
    return text.substr(0, text.find(L'\0'));
}

}  // namespace

wchar_t* UpperName::MakeBuffer(std::size_t length) {
    if (length >= kShort) buffer_.allocated = new wchar_t[length + 1];
    capacity_ = length + 1;
    wchar_t* buffer = IsLong() ? buffer_.allocated : buffer_.inPlace;
    buffer[length] = L'\0';
    return buffer;
}

UpperName::UpperName(std::wstring_view token) {
    if (token.size() >= kShort) token = UpToZero(token);
    if (token.empty()) return;
    wchar_t* to = MakeBuffer(token.size());
    wchar_t seen = 0;
    for (const wchar_t character : token) {
        if (character == 0) {  // of a short one, which stays in place
            const auto length = static_cast<std::size_t>(to - buffer_.inPlace);
            *to = L'\0';
            capacity_ = length == 0 ? 0 : length + 1;
            break;
        }
        seen |= character;
        *to++ = UpperAscii(character);
    }
    if ((seen & ~0x7F) != 0) platform::ToUpperCase(to - Length(), Length());
}

UpperName::UpperName(const UpperName& other) {
    if (other.capacity_ != 0) std::ranges::copy(other.View(), MakeBuffer(other.Length()));
}

UpperName& UpperName::operator=(const UpperName& other) {
    if (this != &other) *this = UpperName(other);
    return *this;
}

UpperName UpperName::Verbatim(std::wstring_view characters) {
    characters = UpToZero(characters);
    UpperName name;
    if (!characters.empty()) std::ranges::copy(characters, name.MakeBuffer(characters.size()));
    return name;
}

// Of characters that differ.
std::strong_ordering UpperName::CompareUnits(wchar_t left, wchar_t right) {
    const std::strong_ordering order = OrderOf(left) <=> OrderOf(right);
    return std::is_neq(order) ? order : left <=> right;  // half a pair and a whole one begin alike
}

std::wstring UpperText(std::wstring_view text) {
    std::wstring upper(text.size(), L'\0');
    if (!CopyUpperAscii(text, upper.data())) {
        // The platform stops at a zero: one call per run between zeros.
        for (std::size_t begin = 0; begin < upper.size();) {
            const std::size_t end = std::min(upper.find(L'\0', begin), upper.size());
            if (end > begin) platform::ToUpperCase(upper.data() + begin, end - begin);
            begin = end + 1;
        }
    }
    return upper;
}

bool IsWholeKeyword(std::wstring_view token, std::wstring_view keyword) {
    if (token == keyword) return true;  // as most are written
    if (token.size() < keyword.size()) return false;
    if (token.size() > keyword.size() && token[keyword.size()] != L'\0') return false;
    return std::ranges::equal(
        token.substr(0, keyword.size()), keyword, [](wchar_t character, wchar_t expected) {
            const bool isLower = character >= L'a' && character <= L'z';
            return (isLower ? character - (L'a' - L'A') : character) == expected;
        });
}

}  // namespace compositions
