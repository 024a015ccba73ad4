#pragma once

// A second log file that receives the text of every message as it closes. Off in this library;
// whoever wants one in a module of his own names a file.

#include <string>

namespace helpers {

class SecondLog {
public:
    // Caller serialises, before messages are written. An empty path switches it off.
    static void SetFile(const std::wstring& path);
    static bool IsOn();
    // Any thread. Opens the file for appending, writes `text` in the ANSI code page and closes it;
    // nothing happens when that fails.
    static void Append(const std::wstring& text);
};

}  // namespace helpers
