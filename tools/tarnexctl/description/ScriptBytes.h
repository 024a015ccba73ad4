#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarnexctl {

// A script's byte above 0x7F is kept as the character of its code plus this.
inline constexpr std::uint32_t kHighByteBase = 0xFF00;

// Whether a script has a byte for the character.
inline bool HasScriptByte(wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    return code < 0x80 || (code >= kHighByteBase + 0x80 && code <= kHighByteBase + 0xFF);
}

// The bytes that a script would have to hold for the text; nothing when there are none.
std::optional<std::string> ScriptBytes(std::wstring_view text);

}  // namespace tarnexctl
