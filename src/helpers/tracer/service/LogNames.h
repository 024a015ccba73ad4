#pragma once

#include <string>
#include <vector>

namespace helpers {

// Where a process's log may go, in the order in which it is tried.
struct LogNames {
    struct Place {
        std::wstring folder;  // to be created first; empty when there is none to create
        std::wstring file;
    };
    std::vector<Place> places;
    std::string firstLine;  // the program's name in the ANSI code page, and "\n"
};

// The names for a log that starts now. Throws std::runtime_error when there is no local time.
LogNames MakeLogNames(const std::wstring& executablePath);

// The local time as "2026-11-16 0-25-17": no leading zeros.
std::wstring LogStamp();

}  // namespace helpers
