#pragma once

// What is done to short texts so often that the general functions, which are made for long ones,
// take too long to begin.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace helpers::scripting {

inline bool AreSame(std::wstring_view left, std::wstring_view right) {
    const std::size_t size = left.size();
    if (size != right.size()) return false;
    using Word = std::uint64_t;
    constexpr std::size_t kStep = sizeof(Word) / sizeof(wchar_t);
    if (size < kStep) {
        for (std::size_t i = 0; i < size; ++i) {
            if (left[i] != right[i]) return false;
        }
        return true;
    }
    const auto isSameAt = [&](std::size_t at) {
        Word mine, its;
        std::memcpy(&mine, left.data() + at, sizeof mine);
        std::memcpy(&its, right.data() + at, sizeof its);
        return mine == its;
    };
    const std::size_t last = size - kStep;  // goes over some of the step before
    for (std::size_t at = 0; at < last; at += kStep) {
        if (!isSameAt(at)) return false;
    }
    return isSameAt(last);
}

}  // namespace helpers::scripting
