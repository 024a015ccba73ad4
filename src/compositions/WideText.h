#pragma once

// A wide string that keeps a short text in place: most of what a description holds is short, and
// there is much of it. May hold zeros. Distinct objects may be used from distinct threads.

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "helpers/scripting/ShortTexts.h"

namespace compositions {

template <std::size_t kBytesInPlace>
class BasicWideText {
public:
    // The longest text that needs no memory of its own.
    static constexpr std::size_t kLongestInPlace = kBytesInPlace / sizeof(wchar_t) - 1;

    BasicWideText() { buffer_.inPlace[0] = 0; }
    // Copies the characters, zeros included. Of anything that can be seen as such.
    template <class Characters>
    requires std::convertible_to<const Characters&, std::wstring_view> BasicWideText(
        const Characters& characters) {
        Copy(characters);
    }
    BasicWideText(const BasicWideText& other) { Copy(other); }
    // The other is empty behind it.
    BasicWideText(BasicWideText&& other) noexcept {
        Take(other);
        other.Forget();
    }
    // Of characters of its own too.
    template <class Characters>
    requires std::convertible_to<const Characters&, std::wstring_view> BasicWideText& operator=(
        const Characters& characters) {
        return Replace(characters);
    }
    BasicWideText& operator=(const BasicWideText& other) { return Replace(other); }
    BasicWideText& operator=(BasicWideText&& other) noexcept {
        if (this == &other) return *this;
        Release();
        Take(other);
        other.Forget();
        return *this;
    }
    ~BasicWideText() { Release(); }

    // For whoever writes the characters himself; what they are before that is unknown.
    static BasicWideText OfSize(std::size_t size) {
        BasicWideText text;
        text.Begin(size);
        return text;
    }
    // The same for a text that is there: its characters are gone, unless memory is short.
    wchar_t* Renew(std::size_t size) {
        if (size > kLongestInPlace) {
            *this = OfSize(size);
            return buffer_.allocated;
        }
        Release();
        return Begin(size);
    }
    // Keeps the first characters; `size` is at most the present one.
    void CutTo(std::size_t size);

    // Zero-terminated.
    const wchar_t* data() const { return IsLong() ? buffer_.allocated : buffer_.inPlace; }
    wchar_t* data() { return IsLong() ? buffer_.allocated : buffer_.inPlace; }
    const wchar_t* c_str() const { return data(); }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    wchar_t operator[](std::size_t index) const { return data()[index]; }
    operator std::wstring_view() const { return {data(), size_}; }
    operator std::wstring() const { return {data(), size_}; }

    bool operator==(const BasicWideText& other) const { return IsEqual(other); }
    template <class Characters>
    requires std::convertible_to<const Characters&, std::wstring_view>
    bool operator==(const Characters& characters) const { return IsEqual(characters); }

private:
    union Buffer {
        Buffer() {}
        wchar_t* allocated;
        wchar_t inPlace[kLongestInPlace + 1];
    };

    bool IsLong() const {
        if (size_ > kLongestInPlace) [[unlikely]]
            return true;
        return false;
    }
    bool IsEqual(std::wstring_view other) const {
        return helpers::scripting::AreSame({data(), size_}, other);
    }

    BasicWideText& Replace(std::wstring_view characters);
    // Into this text, which has no memory.
    void Copy(std::wstring_view characters);
    // Makes this text, which has no memory, one of that size.
    wchar_t* Begin(std::size_t size) {
        if (size > kLongestInPlace) buffer_.allocated = new wchar_t[size + 1];
        size_ = size;
        wchar_t* const begin = data();
        begin[size] = 0;
        return begin;
    }
    void Release() {
        if (IsLong()) delete[] buffer_.allocated;
    }
    void Take(const BasicWideText& other) {
        size_ = other.size_;
        buffer_ = other.buffer_;
    }
    void Forget() {
        size_ = 0;
        buffer_.inPlace[0] = 0;
    }

    std::size_t size_ = 0;
    Buffer buffer_;  // allocated when the text is longer than what stays in place
};

extern template class BasicWideText<24>;
extern template class BasicWideText<64>;

using NumberText = BasicWideText<24>;
using WideText = BasicWideText<64>;

}  // namespace compositions
