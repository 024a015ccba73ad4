#pragma once

// The record that describes one property: what GetPropertyInfo hands out.

#include <cstdint>

namespace base_types {

// Which typed form a property's value has. Any other code is a property of none of the five forms:
// it is reached through the raw operations alone.
enum PropertyType : std::int32_t {
    ePropertyRaw = 0,
    ePropertyInt = 1,     // std::int32_t
    ePropertyFloat = 2,   // 32-bit IEEE float
    ePropertyBool = 3,    // one byte
    ePropertyInt64 = 4,   // std::int64_t
    ePropertyString = 5,  // std::wstring
};

// Bits of PropertyInfo::access. The property set tests the first two; the others are carried for
// the engine that animates the property.
enum PropertyAccess : std::uint32_t {
    eAccessRead = 1,
    eAccessWrite = 2,
    eAccessExpensive = 4,
    eAccessEnveloped = 8,
    eAccessNoInterpolation = 32,
};

struct PropertyInfo {
    std::int32_t size;     // bytes of the value's storage; bounds the raw operations
    std::uint32_t extra;   // carried along unchanged, never interpreted here
    std::uint32_t access;  // PropertyAccess bits
    std::int32_t type;     // PropertyType
};

static_assert(sizeof(PropertyInfo) == 16, "four 32-bit words cross the interface");

}  // namespace base_types
