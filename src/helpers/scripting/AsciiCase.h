#pragma once

// Upper-casing where no locale has a say.

namespace helpers::scripting {

inline bool IsAscii(wchar_t character) {
    return (character & ~0x7F) == 0;
}

inline wchar_t UpperAscii(wchar_t character) {
    const int isLower = (character >= L'a') & (character <= L'z');  // no branch: many go at once
    return static_cast<wchar_t>(character - isLower * (L'a' - L'A'));
}

}  // namespace helpers::scripting
