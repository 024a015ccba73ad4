#pragma once

// An upper-cased name: every key and list entry of a description. Owns a zero-terminated buffer,
// which moves with it while the name is short, or none for an empty name. Names end at their first
// zero character and compare by 16-bit code unit. Distinct objects may be used from distinct
// threads.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "compositions/WideText.h"

namespace compositions {

class UpperName {
public:
    UpperName() = default;
    // Copies the token up to its first zero and upper-cases the copy (current locale on Windows,
    // ASCII elsewhere).
    explicit UpperName(std::wstring_view token) { Assign(token); }
    // Makes this name one of the token, which is none of its own characters.
    void Assign(std::wstring_view token);

    // Takes the characters as they stand, without upper-casing, up to the first zero.
    static UpperName Verbatim(WideText characters);
    // The same for the characters that `write(WideText&)` makes its argument hold; before, that are
    // the name's.
    template <class Write>
    void WriteVerbatim(Write&& write) {
        write(text_);
        EndAtZero();
    }

    // Zero-terminated; null for an empty name.
    const wchar_t* Data() const { return text_.empty() ? nullptr : text_.data(); }
    // Characters of the buffer, its terminator included; 0 without a buffer.
    std::size_t Capacity() const { return text_.empty() ? 0 : text_.size() + 1; }
    std::size_t Length() const { return text_.size(); }
    std::wstring_view View() const { return text_; }

    bool operator==(const UpperName& other) const { return text_ == other.text_; }
    // A name without a buffer equals no keyword, not even an empty one.
    bool operator==(std::wstring_view keyword) const { return !text_.empty() && text_ == keyword; }
    std::strong_ordering operator<=>(const UpperName& other) const {
        const wchar_t* mine = text_.data();
        const wchar_t* its = other.text_.data();
        while (*mine == *its && *mine != 0) {
            ++mine;
            ++its;
        }
        if (IsBelowSurrogates(*mine) && IsBelowSurrogates(*its)) return *mine <=> *its;
        return CompareUnits(*mine, *its);
    }

private:
    void EndAtZero();
    static bool IsBelowSurrogates(wchar_t character) {
        return static_cast<std::uint32_t>(character) < 0xD800;
    }
    static std::strong_ordering CompareUnits(wchar_t left, wchar_t right);

    WideText text_;
};

// The whole text in upper case, by the same rules; zero characters stay.
WideText UpperText(std::wstring_view text);
// The same into `upper`, none of whose characters are in the text.
void AssignUpper(std::wstring_view text, WideText& upper);

// Whether an UpperName made of the token would equal the keyword. The keyword is upper-case ASCII
// and begins with a letter.
bool IsWholeKeyword(std::wstring_view token, std::wstring_view keyword);
// The same; most tokens differ in their first letter already.
inline bool IsKeyword(std::wstring_view token, std::wstring_view keyword) {
    constexpr wchar_t kCaseBit = L'a' - L'A';
    return !token.empty() && (token[0] & ~kCaseBit) == keyword[0] && IsWholeKeyword(token, keyword);
}

}  // namespace compositions
