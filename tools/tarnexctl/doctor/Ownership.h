#pragma once

// Who holds the one ownership of the library that a machine has.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarnexctl {

enum class OwnershipState {
    kFree,     // the next process to load the library gets it
    kTaken,    // a running process has it
    kStuck,    // its owner is gone, but processes that were refused keep the library loaded
    kUnknown,  // taken, by whom could not be found out
    kNoLibrary,
};

const char* OwnershipName(OwnershipState state);

struct Holder {
    std::uint32_t process = 0;
    std::string program;
    std::optional<bool> owner;  // none when its memory may not be read
};

struct Ownership {
    OwnershipState state = OwnershipState::kNoLibrary;
    std::vector<Holder> holders;
    std::string problem;  // why the library does not load
};

// Asks a child process to load the library for a moment. While it does, another process that loads
// the library for the first time is refused.
Ownership AskOwnership(const std::string& library, std::uint32_t timeoutMs);

}  // namespace tarnexctl
