#pragma once

// What an effect says of itself. Owned by the effect and valid while it lives.

#include <cstdint>
#include <string>

namespace fx {

// Bits of EffectDescriptor::flags that the library sets for its own compositions; a plug-in's flags
// are passed on unchanged.
enum EffectFlags : std::uint32_t {
    eEffectMultipleInputs = 0x02,  // not a filter
    eEffectFilter = 0x04,          // works on exactly one input
    eEffectStandard = 0x80,        // set on every composition
};

struct EffectDescriptor {
    std::uint32_t flags = 0;
    std::uint64_t inputs = 0;  // number of inputs; the count itself is 32-bit
    std::wstring id;           // the effect's full name; a composition's is name\category
};

}  // namespace fx
