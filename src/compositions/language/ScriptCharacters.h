#pragma once

// The character classes of composition scripts. They decide what is a valid script.

#include <string_view>

namespace compositions::characters {

inline constexpr std::wstring_view kBlanks = L" \n\t\r";
inline constexpr std::wstring_view kDigits = L"0123456789";
inline constexpr std::wstring_view kQuote = L"\"";
inline constexpr std::wstring_view kDigitsQuote = L"0123456789\"";
inline constexpr std::wstring_view kLetters =
    L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
inline constexpr std::wstring_view kIdentStart =
    L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_";
inline constexpr std::wstring_view kAfterNumber =
    L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
    L" \n\t\r"
    L";[]=\":\\.(){},-+%";
inline constexpr std::wstring_view kAfterIdent =
    L";[]=\":\\.(){},-+%"
    L" \n\t\r";
inline constexpr std::wstring_view kAfterOpenBracket =
    L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
    L" \n\t\r";
inline constexpr std::wstring_view kAnyScriptChar =
    L" \n\t\r"
    L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
    L";[]=\":\\.(){},-+%"
    L"0123456789";
// A string's first character can be no quote, no plus and no underscore.
inline constexpr std::wstring_view kStringStart =
    L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
    L" \n\t\r"
    L"0123456789"
    L";[]=:\\.(){},-%";

}  // namespace compositions::characters
