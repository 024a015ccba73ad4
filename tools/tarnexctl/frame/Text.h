#pragma once

// Texts inside the program are UTF-8. What comes from outside (file names, scripts, logs, plug-ins)
// passes through here before it is shown.

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tarnexctl {

bool IsValidUtf8(std::string_view text);

// The same text with every byte that is not part of valid UTF-8 replaced by U+FFFD.
std::string ValidUtf8(std::string_view text);

// Wide text is UTF-16 where wchar_t has 16 bits and UTF-32 where it has 32. Neither direction
// fails: what cannot be expressed becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);
std::wstring ToWide(std::string_view utf8);

// Bytes of a log or of another library's message: taken as UTF-8 when they are valid as such, else
// as text of the system's ANSI code page.
std::string FromSystemBytes(std::string_view bytes);

// The text on one line and harmless on a terminal: control characters become escapes (\n, \x1B).
std::string Printable(std::string_view text);

// What the user named, as messages show it: printable, in double quotes.
std::string InQuotes(std::string_view name);

// How many terminal columns a text takes, counting code points.
std::size_t DisplayWidth(std::string_view utf8);

// Paths keep the exact bytes or code units that were given.
std::filesystem::path ToPath(const std::string& utf8);
std::string FromPath(const std::filesystem::path& path);

// The texts as one, with the separator between two.
std::string Joined(const std::vector<std::string>& texts, std::string_view separator);

// "1 plug-in", "3 plug-ins".
std::string Count(std::size_t number, const std::string& singular, const std::string& plural);

// The text in lines of at most `width` columns, each behind `indent`.
std::string Wrapped(const std::string& text, const std::string& indent, std::size_t width = 80);

}  // namespace tarnexctl
