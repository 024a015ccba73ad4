#pragma once

// A thread that outlives neither its library nor its process, one step below normal priority, with
// the system's component model initialised (apartment-threaded) where there is one.

#include <cstdint>

namespace platform {

// Lives as long as the library: the thread works on it. Start and Join: caller serialises.
class BackgroundThread {
public:
    using Function = void (*)(void* argument);

    // Runs `run` on a new thread. False when the system refuses. May be called while the library is
    // being loaded; `run` starts when that is done.
    bool Start(Function run, void* argument);

    // Called by `run` once it needs nothing more of the loader. Until then the library stays in
    // memory, even if its host has already freed it.
    void Ready();

    // Waits until `run` has returned and none of the library's code is left on the thread. May be
    // called while the library is being unloaded. False when the thread died on the way, as every
    // other thread has when a process ends.
    bool Join();

    // The system's handle; 0 when there is none.
    std::uint64_t Handle() const { return handle_; }

private:
    friend struct BackgroundThreadBody;

    Function run_ = nullptr;
    void* argument_ = nullptr;
    std::uint64_t handle_ = 0;
    // Not every system's body needs the rest.
    [[maybe_unused]] std::uint64_t ready_ = 0;
    [[maybe_unused]] std::uint64_t done_ = 0;
    [[maybe_unused]] void* module_ = nullptr;
};

}  // namespace platform
