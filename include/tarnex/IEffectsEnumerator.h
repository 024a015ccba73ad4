#pragma once

// The list of all effects that the global factory knows by name. Caller serialises.

#include <cstdint>
#include <list>
#include <string>

#include "tarnex/Errors.h"

namespace tarnex {

// One effect as it was when its record was made.
struct EffectRecord {
    std::uint64_t index = 0;  // global index
    std::uint32_t flags = 0;  // as in the effect's descriptor
    std::uint64_t inputs = 0;
    std::wstring name;    // the descriptor's id
    bool enabled = true;  // false after RemoveEffect; the effect can still be created
};

class IEffectsEnumerator {
public:
    /* 0 */ virtual ~IEffectsEnumerator() = default;

    // Replaces `out` by copies of every record in list order, disabled ones included.
    /* 1 */ virtual _eError GetEffects(std::list<EffectRecord>& out) = 0;
};

}  // namespace tarnex
