#include "Text.h"

#include <cstdint>

namespace host {

namespace {

// A character of a wide text, which has 16-bit units on one system and 32-bit ones on another.
char32_t NextCharacter(const std::wstring& text, std::size_t& position) {
    const auto unit = static_cast<char32_t>(text[position++]);
    if (unit >= 0xD800 && unit < 0xDC00 && position < text.size()) {
        const auto low = static_cast<char32_t>(text[position]);
        if (low >= 0xDC00 && low < 0xE000) {
            ++position;
            return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
    }
    return unit;
}

}  // namespace

std::string Utf8(const std::wstring& text) {
    std::string bytes;
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = NextCharacter(text, position);
        if (character < 0x80) {
            bytes += static_cast<char>(character);
            continue;
        }
        const int tail = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
        constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
        bytes += static_cast<char>(kLead[tail] | (character >> (6 * tail)));
        for (int i = tail - 1; i >= 0; --i) {
            bytes += static_cast<char>(0x80 | ((character >> (6 * i)) & 0x3F));
        }
    }
    return bytes;
}

std::wstring Wide(const std::filesystem::path& path) {
    // The path's own widening knows ASCII alone on some systems, whatever the locale.
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        const std::u16string units = path.u16string();
        return {units.begin(), units.end()};
    } else {
        const std::u32string characters = path.u32string();
        return {characters.begin(), characters.end()};
    }
}

#define TARNEX_CASE(code, name) \
    case name:                  \
        return #name;

std::string Name(tarnex::_eError code) {
    using namespace tarnex;
    switch (code) { TARNEX_MANAGER_ERRORS(TARNEX_CASE) }
    return std::to_string(static_cast<std::uint32_t>(code));
}

std::string Name(fx::_eError code) {
    using namespace fx;
    switch (code) { TARNEX_FX_ERRORS(TARNEX_CASE) }
    return std::to_string(static_cast<std::uint32_t>(code));
}

std::string Name(base_types::_eError code) {
    using namespace base_types;
    switch (code) { TARNEX_PROPERTY_ERRORS(TARNEX_CASE) }
    return std::to_string(static_cast<std::uint32_t>(code));
}

#undef TARNEX_CASE

}  // namespace host
