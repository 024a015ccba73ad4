#pragma once

#include <cstdint>
#include <stdexcept>

namespace compositions {

// Where bytes that are being loaded cannot be believed.
struct ArchiveFault {
    std::uint64_t offset = 0;  // of the count, or where the bytes end
    bool isCount = false;      // a count or length that the bytes behind it cannot hold
    std::uint64_t count = 0;
};

// Thrown inside the script archive when its bytes end early or cannot be written. ScriptArchive
// catches it: no caller of that sees one.
class arch_exception : public std::runtime_error {
public:
    explicit arch_exception(ArchiveFault fault = {})
        : std::runtime_error("script archive error"), fault_(fault) {}

    // Meaningless unless bytes were being loaded.
    const ArchiveFault& Fault() const { return fault_; }

private:
    ArchiveFault fault_;
};

}  // namespace compositions
