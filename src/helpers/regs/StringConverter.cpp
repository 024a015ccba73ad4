#include "helpers/regs/StringConverter.h"

#include <cstring>

#include "platform/CodePage.h"

namespace helpers::regs {

std::wstring StringConverter::Convert(const std::uint8_t* bytes, std::size_t size) {
    if (size % sizeof(char16_t) != 0) throw Exception();
    std::u16string units(size / sizeof(char16_t), u'\0');
    if (size != 0) std::memcpy(units.data(), bytes, size);
    while (!units.empty() && units.back() == u'\0') units.pop_back();
    return platform::FromUtf16(units);
}

}  // namespace helpers::regs
