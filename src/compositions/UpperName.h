#pragma once

// An upper-cased name: every key and list entry of a description. Owns a zero-terminated buffer,
// which moves with it while the name is short, or none for an empty name. Names end at their first
// zero character and compare by 16-bit code unit. Distinct objects may be used from distinct
// threads.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace compositions {

class UpperName {
public:
    UpperName() = default;
    // Copies the token up to its first zero and upper-cases the copy (current locale on Windows,
    // ASCII elsewhere).
    explicit UpperName(std::wstring_view token);
    UpperName(const UpperName& other);
    UpperName(UpperName&& other) noexcept
        : capacity_(std::exchange(other.capacity_, 0)), buffer_(other.buffer_) {}
    UpperName& operator=(const UpperName& other);
    UpperName& operator=(UpperName&& other) noexcept {
        std::swap(capacity_, other.capacity_);
        std::swap(buffer_, other.buffer_);
        return *this;
    }
    ~UpperName() {
        if (IsLong()) delete[] buffer_.allocated;
    }

    // Copies the characters as they stand, without upper-casing, up to the first zero.
    static UpperName Verbatim(std::wstring_view characters);

    // Zero-terminated; null for an empty name.
    const wchar_t* Data() const {
        if (capacity_ == 0) return nullptr;
        return IsLong() ? buffer_.allocated : buffer_.inPlace;
    }
    // Characters of the buffer, its terminator included; 0 without a buffer.
    std::size_t Capacity() const { return capacity_; }
    std::size_t Length() const { return capacity_ == 0 ? 0 : capacity_ - 1; }
    std::wstring_view View() const { return {Data(), Length()}; }

    bool operator==(const UpperName& other) const { return View() == other.View(); }
    // A name without a buffer equals no keyword, not even an empty one.
    bool operator==(std::wstring_view keyword) const { return capacity_ != 0 && View() == keyword; }
    std::strong_ordering operator<=>(const UpperName& other) const {
        const wchar_t* mine = Text();
        const wchar_t* its = other.Text();
        while (*mine == *its && *mine != 0) {
            ++mine;
            ++its;
        }
        if (IsBelowSurrogates(*mine) && IsBelowSurrogates(*its)) return *mine <=> *its;
        return CompareUnits(*mine, *its);
    }

private:
    static constexpr std::size_t kShort = 56 / sizeof(wchar_t);  // characters, with the terminator
    union Buffer {
        wchar_t* allocated = nullptr;
        wchar_t inPlace[kShort];
    };

    bool IsLong() const { return capacity_ > kShort; }
    const wchar_t* Text() const { return capacity_ == 0 ? L"" : Data(); }
    static bool IsBelowSurrogates(wchar_t character) {
        return static_cast<std::uint32_t>(character) < 0xD800;
    }
    static std::strong_ordering CompareUnits(wchar_t left, wchar_t right);
    wchar_t* MakeBuffer(std::size_t length);

    std::size_t capacity_ = 0;
    Buffer buffer_{};  // allocated when the capacity is larger than a buffer in place
};

// The whole text in upper case, by the same rules; zero characters stay.
std::wstring UpperText(std::wstring_view text);

// Whether an UpperName made of the token would equal the keyword. The keyword is upper-case ASCII
// and begins with a letter.
bool IsWholeKeyword(std::wstring_view token, std::wstring_view keyword);
// The same; most tokens differ in their first letter already.
inline bool IsKeyword(std::wstring_view token, std::wstring_view keyword) {
    constexpr wchar_t kCaseBit = L'a' - L'A';
    return !token.empty() && (token[0] & ~kCaseBit) == keyword[0] && IsWholeKeyword(token, keyword);
}

}  // namespace compositions
