#pragma once

// Named memory that the modules of one process share. Caller serialises.

#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {

class SharedMemory {
public:
    enum class Outcome { kOpened, kCreated, kMissing, kFailed };

    SharedMemory() = default;
    ~SharedMemory() { Close(false); }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    // Opens the memory of that name, or creates it, zeroed, and maps `size` bytes of it. kMissing
    // when there is none and it may not be created. On failure `error` is the system's number and
    // nothing stays open. Names of this process only: what another one left behind under a process
    // id that came again is never found.
    Outcome Attach(const std::string& name, bool mayCreate, std::size_t size, std::uint32_t& error);

    // Unmaps. `last` tells that no other module uses it, so that the name goes, too.
    void Close(bool last);

    void* Data() const { return data_; }

private:
    void* data_ = nullptr;
    std::size_t size_ = 0;
    std::intptr_t handle_ = 0;
    std::string name_;
};

}  // namespace platform
