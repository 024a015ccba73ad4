#pragma once

namespace platform {

// Tests the machine-wide flag of this library file and sets it: a plain read, then a plain write.
// True when it was clear, so the caller is its owner. The flag clears when the last process that
// holds the library has unloaded it or died. Call once, when the library is attached.
bool TakeMachineFlag();

}  // namespace platform
