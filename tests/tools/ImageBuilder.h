#pragma once

// Builds small library files in memory, by plain code over the published formats.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tooltest {

struct ImageParts {
    std::uint16_t machine = 0x8664;  // of a PE file
    bool isLibrary = true;
    std::vector<std::pair<std::string, std::vector<std::string>>> imports;  // library, functions
    std::vector<std::string> exports;
};

std::vector<std::byte> BuildPe(const ImageParts& parts);

// Needed libraries and a search path; no sections.
std::vector<std::byte> BuildElf(const std::vector<std::string>& needed, const std::string& runPath);

}  // namespace tooltest
