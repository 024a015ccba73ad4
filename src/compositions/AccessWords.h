#pragma once

// The access words of PROPERTIES and MAPPING statements.

#include <cstdint>
#include <string_view>

#include "compositions/ReadStatus.h"

namespace compositions {

enum Access : std::uint32_t {
    kAccessRead = 1,
    kAccessWrite = 2,
    kAccessExpensive = 4,
    kAccessEnveloped = 8,
    kAccessNoInterpolation = 32,
};

enum class AccessWord : std::uint8_t { kTaken, kNotAnAccessWord, kRefused };

// The flags of one statement: they start at READ and each access word sets its own.
class AccessFlags {
public:
    // A refused word leaves its reason in Status and the flags as they were.
    AccessWord Take(std::wstring_view word);

    std::uint32_t Value() const { return flags_; }
    std::int32_t Status() const { return status_; }

private:
    AccessWord Set(std::uint32_t flags, std::uint32_t opposed, std::int32_t refusal);

    std::uint32_t flags_ = kAccessRead;
    std::int32_t status_ = status::kRead;
};

}  // namespace compositions
