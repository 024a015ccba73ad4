#pragma once

// Upper-casing where no locale has a say.

namespace helpers::scripting {

inline bool IsAscii(wchar_t character) {
    return (character & ~0x7F) == 0;
}

inline wchar_t UpperAscii(wchar_t character) {
    const bool isLower = character >= L'a' && character <= L'z';
    return isLower ? static_cast<wchar_t>(character - (L'a' - L'A')) : character;
}

}  // namespace helpers::scripting
