#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct PlainComparison {
    std::string difference;              // the first one, in words; empty when there is none
    std::vector<std::int32_t> sections;  // the status of each, in the order of Section
};

// Reads the script with the real reader, with and without an observer, and with the plain one over
// the plain matcher. For short scripts, in programs that capture the output.
PlainComparison CompareWithPlain(const std::string& text);
