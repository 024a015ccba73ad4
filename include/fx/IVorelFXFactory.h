#pragma once

// A factory of effects: what a plug-in library hands out, and what the host gets for all of them.
// The slot order is fixed. Caller serialises.

#include <cstdint>
#include <memory>
#include <string>

#include "fx/Errors.h"
#include "fx/IBaseFX.h"

namespace fx {

class IVorelFXFactory {
public:
    /* 0 */ virtual ~IVorelFXFactory() = default;

    // Number of effects offered: indexes 0 to count-1.
    /* 1 */ virtual std::uint32_t GetFXCount() = 0;

    // The effect's name; empty when the index is unknown.
    /* 2 */ virtual std::wstring GetFXName(std::uint64_t index) = 0;

    // On eSuccess `out` holds a new effect, shared with the caller.
    /* 3 */ virtual _eError CreateFX(std::uint64_t index, std::shared_ptr<IBaseFX>& out) = 0;
};

}  // namespace fx
