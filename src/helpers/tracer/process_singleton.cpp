#include "helpers/tracer/process_singleton.h"

#include "helpers/tracer/Tracer.h"
#include "platform/DebugOutput.h"
#include "platform/Thread.h"

namespace helpers {

std::string process_singleton::Name() {
    return "CommonTracer_" + std::to_string(platform::CurrentProcessId());
}

process_singleton::Outcome process_singleton::Attach(bool mayCreate) {
    std::uint32_t error = 0;
    switch (memory_.Attach(Name(), mayCreate, sizeof(BlockLayout), error)) {
        case platform::SharedMemory::Outcome::kCreated:
            // release; pairs with the acquire of the modules that come later.
            References().store(1, std::memory_order_release);
            return Outcome::kCreated;
        case platform::SharedMemory::Outcome::kOpened:
            if (IsPlausible()) {
                // acquire; pairs with the release that created the block.
                References().fetch_add(1, std::memory_order_acquire);
                return Outcome::kOpened;
            }
            memory_.Close(false);
            return Outcome::kAbsent;
        case platform::SharedMemory::Outcome::kMissing:
            return Outcome::kAbsent;
        case platform::SharedMemory::Outcome::kFailed:
            break;
    }
    const std::string text =
        "process_singleton, MapViewOfFile failed with error: " + std::to_string(error);
    platform::DebugOutput(text.c_str());
    return Outcome::kAbsent;
}

void process_singleton::Detach() {
    if (Block() == nullptr) return;
    // acquire and release; pair with each other among the modules that leave.
    const bool last = References().fetch_sub(1, std::memory_order_acq_rel) == 1;
    memory_.Close(last);
}

bool process_singleton::IsPlausible() const {
    constexpr std::uint32_t kMostModules = 1'000'000;
    // relaxed; read for its size only.
    const std::uint32_t references = References().load(std::memory_order_relaxed);
    return references >= 1 && references <= kMostModules && Tracer(Block()->tracer).IsPlausible();
}

}  // namespace helpers
