#include "compositions/UpperName.h"

#include <algorithm>
#include <utility>

#include "platform/CharacterCase.h"

namespace compositions {
namespace {

// Writes the upper-case form of the ASCII characters; answers whether there were only those.
bool CopyUpperAscii(std::wstring_view from, wchar_t* to) {
    wchar_t seen = 0;
    for (wchar_t character : from) {
        seen |= character;
        const bool isLower = character >= L'a' && character <= L'z';
        *to++ = isLower ? static_cast<wchar_t>(character - (L'a' - L'A')) : character;
    }
    return (seen & ~0x7F) == 0;
}

std::wstring_view UpToZero(std::wstring_view text) {
    return text.substr(0, text.find(L'\0'));
}

std::unique_ptr<wchar_t[]> MakeBuffer(std::size_t length) {
    auto buffer = std::make_unique_for_overwrite<wchar_t[]>(length + 1);
    buffer[length] = L'\0';
    return buffer;
}

}  // namespace

UpperName::UpperName(std::wstring_view token) {
    token = UpToZero(token);
    if (token.empty()) return;
    buffer_ = MakeBuffer(token.size());
    capacity_ = token.size() + 1;
    if (!CopyUpperAscii(token, buffer_.get())) {
        platform::ToUpperCase(buffer_.get(), token.size());
    }
}

UpperName::UpperName(const UpperName& other) {
    if (!other.buffer_) return;
    buffer_ = MakeBuffer(other.Length());
    capacity_ = other.capacity_;
    std::ranges::copy(other.View(), buffer_.get());
}

UpperName::UpperName(UpperName&& other) noexcept
    : buffer_(std::move(other.buffer_)), capacity_(std::exchange(other.capacity_, 0)) {}

UpperName& UpperName::operator=(const UpperName& other) {
    if (this != &other) *this = UpperName(other);
    return *this;
}

UpperName& UpperName::operator=(UpperName&& other) noexcept {
    buffer_ = std::move(other.buffer_);
    capacity_ = std::exchange(other.capacity_, 0);
    return *this;
}

UpperName UpperName::Verbatim(std::wstring_view characters) {
    characters = UpToZero(characters);
    UpperName name;
    if (characters.empty()) return name;
    name.buffer_ = MakeBuffer(characters.size());
    name.capacity_ = characters.size() + 1;
    std::ranges::copy(characters, name.buffer_.get());
    return name;
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

bool IsKeyword(std::wstring_view token, std::wstring_view keyword) {
    if (token.size() < keyword.size()) return false;
    if (token.size() > keyword.size() && token[keyword.size()] != L'\0') return false;
    return std::ranges::equal(
        token.substr(0, keyword.size()), keyword, [](wchar_t character, wchar_t expected) {
            const bool isLower = character >= L'a' && character <= L'z';
            return (isLower ? character - (L'a' - L'A') : character) == expected;
        });
}

}  // namespace compositions
