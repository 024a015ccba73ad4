#pragma once

// The order of property names: by UTF-16 code unit, a prefix first, no case folding.

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <string>

namespace base_types {

// Where a character stands in the order of UTF-16 code units. Where wide characters are 32 bits,
// those beyond 0xFFFF stand between 0xD7FF and 0xE000, for they are surrogate pairs in UTF-16.
inline std::uint32_t CodeUnitRank(wchar_t character) {
    const auto value = static_cast<std::uint32_t>(character);
    if constexpr (sizeof(wchar_t) == 2) {
        return value;
    } else {
        return value >= 0xE000 && value <= 0xFFFF ? value + 0x110000 : value;
    }
}

// Negative, 0 or positive: `left` stands before, is, or stands after `right`.
inline int CompareNames(const std::wstring& left, const std::wstring& right) {
    const wchar_t* a = left.data();
    const wchar_t* b = right.data();
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i != common; ++i) {
        if (a[i] != b[i]) {
            return CodeUnitRank(a[i]) < CodeUnitRank(b[i]) ? -1 : 1;
        }
    }
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

}  // namespace base_types
