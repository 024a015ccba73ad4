#pragma once

// An upper-cased name: every key and list entry of a description. Owns a zero-terminated buffer, or
// none for an empty name. Compares by 16-bit code unit. Names end at the first zero character.

#include <compare>
#include <cstddef>
#include <memory>
#include <string_view>

namespace compositions {

class UpperName {
public:
    UpperName() = default;
    // Copies and upper-cases (current locale on Windows, ASCII elsewhere).
    explicit UpperName(std::wstring_view token);
    UpperName(const UpperName& other);
    UpperName(UpperName&& other) noexcept;
    UpperName& operator=(const UpperName& other);
    UpperName& operator=(UpperName&& other) noexcept;
    ~UpperName() = default;

    // Copies the characters as they stand, without upper-casing, up to the first zero.
    static UpperName Verbatim(std::wstring_view characters);

    // Null for an empty name.
    const wchar_t* Data() const { return buffer_.get(); }
    std::size_t Capacity() const {
        return capacity_;
    }  // characters, terminator included; 0 if empty
    std::size_t Length() const { return View().size(); }
    // Up to the first zero character.
    std::wstring_view View() const {
        return buffer_ ? std::wstring_view(buffer_.get()) : std::wstring_view();
    }

    bool operator==(const UpperName& other) const { return View() == other.View(); }
    bool operator==(std::wstring_view keyword) const { return View() == keyword; }
    std::strong_ordering operator<=>(const UpperName& other) const;

private:
    std::unique_ptr<wchar_t[]> buffer_;
    std::size_t capacity_ = 0;
};

}  // namespace compositions
