#pragma once

// Which processes have a library loaded, for tools that explain why a host is refused. Texts are
// UTF-8. What other users' processes hold may stay hidden.

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

struct LibraryHolder {
    std::uint32_t process = 0;
    std::string program;     // its file name; empty when it cannot be had
    std::uint64_t base = 0;  // where the library's image begins in it
};

// Every process but this one that has mapped that file; by process number.
std::vector<LibraryHolder> FindLibraryHolders(const std::string& libraryPath);

// Reads one byte of another process's memory; false when the system does not allow it.
bool ReadProcessByte(std::uint32_t process, std::uint64_t address, unsigned char& value);

}  // namespace platform
