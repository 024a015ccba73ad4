#pragma once

#include <string>

struct PlainComparison {
    std::string difference;  // the first one, in words; empty when there is none
    bool readWhole = false;  // the script read to its end
};

// Reads the script with the real reader, with and without an observer, and with the plain one over
// the plain matcher. For short scripts, in programs that capture the output.
PlainComparison CompareWithPlain(const std::string& text);
