#pragma once

// This module's view of the per-process block: created by the first module, counted by all.

#include <cstdint>
#include <string>

#include "helpers/tracer/BlockLayout.h"
#include "platform/SharedMemory.h"

namespace helpers {

// Loader thread: attached and detached while its module is loaded and unloaded.
class process_singleton {
public:
    enum class Outcome { kCreated, kOpened, kAbsent };

    // "CommonTracer_4242" for process 4242.
    static std::string Name();

    // Opens the block and counts this module, or, if it may, creates it, all zero, with a count of
    // 1. A block that cannot hold a tracer is left alone. A failure to map it goes to the debugger
    // output.
    Outcome Attach(bool mayCreate);

    // Takes this module off the count and unmaps.
    void Detach();

    // In a forked child: the block is the parent's, and so is the count.
    void Abandon() { memory_.Close(false); }

    BlockLayout* Block() const { return static_cast<BlockLayout*>(memory_.Data()); }

private:
    std::atomic_ref<std::uint32_t> References() const {
        return std::atomic_ref<std::uint32_t>(Block()->references);
    }
    bool IsPlausible() const;

    platform::SharedMemory memory_;
};

}  // namespace helpers
