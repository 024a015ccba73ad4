#include "description/ScriptBytes.h"

namespace tarnexctl {

std::optional<std::string> ScriptBytes(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) {
        if (!HasScriptByte(character)) return std::nullopt;
        bytes.push_back(static_cast<char>(static_cast<std::uint32_t>(character) & 0xFF));
    }
    return bytes;
}

}  // namespace tarnexctl
