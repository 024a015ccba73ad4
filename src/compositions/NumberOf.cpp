#include <cstdint>
#include <limits>
#include <string_view>

#include "compositions/CompScriptSections.h"

namespace compositions {

std::int32_t NumberOf(std::wstring_view text) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::size_t start = text.find_first_not_of(L" \t\n\v\f\r");
    if (start == text.npos) return 0;
    text.remove_prefix(start);
    const bool isNegative = text.front() == L'-';
    if (isNegative || text.front() == L'+') text.remove_prefix(1);

    std::int64_t number = 0;
    for (wchar_t character : text) {
        if (character < L'0' || character > L'9') break;
        number = number * 10 + (character - L'0');
        if (number > Limits::max()) return isNegative ? Limits::min() : Limits::max();
    }
    return static_cast<std::int32_t>(isNegative ? -number : number);
}

}  // namespace compositions
