#pragma once

// One property of an effect, as a property set holds it. Effect authors use the ready-made classes
// of sdk/TypedProperty.h; a class of their own serves a value that has to be computed or checked.
// Threads: every operation is called under the lock of the set that owns the property, so it must
// not call that set.

#include <cstdint>
#include <string>

#include "base_types/PropertyInfo.h"

namespace base_types {

// The one mapping between the five typed forms and their type codes.
template <class T>
inline constexpr std::int32_t kTypeOf = ePropertyRaw;
template <>
inline constexpr std::int32_t kTypeOf<std::int32_t> = ePropertyInt;
template <>
inline constexpr std::int32_t kTypeOf<float> = ePropertyFloat;
template <>
inline constexpr std::int32_t kTypeOf<bool> = ePropertyBool;
template <>
inline constexpr std::int32_t kTypeOf<std::int64_t> = ePropertyInt64;
template <>
inline constexpr std::int32_t kTypeOf<std::wstring> = ePropertyString;

// An operation may throw: the set answers a base_types::Exception with its code and anything else
// with eNonInterfaceException. A property that throws must leave its value unchanged.
class Property {
public:
    /* 0 */ virtual ~Property() = default;

    // The value: an std::int32_t, float, bool, std::int64_t or std::wstring as Info().type says,
    // else Info().size bytes. Owned by the property, or by the effect that it is bound to.
    /* 1 */ virtual void* Value() = 0;

    // Copies `*value`, which has the form of Value(), into the storage.
    /* 2 */ virtual void Assign(const void* value) = 0;

    // Writes the smallest and the largest value; false when the property has no range.
    /* 3 */ virtual bool Range(void* min, void* max) = 0;

    // Writes the default value; false when the property has none.
    /* 4 */ virtual bool Default(void* out) = 0;

    const PropertyInfo& Info() const { return info_; }

    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

protected:
    Property(const PropertyInfo& info, void* storage) : info_(info), storage_(storage) {}

    void* Storage() const { return storage_; }

private:
    PropertyInfo info_;
    void* storage_;
};

// Modules of one process hand properties to each other: the layout is an interface.
static_assert(sizeof(Property) == 2 * sizeof(void*) + sizeof(PropertyInfo));

}  // namespace base_types
