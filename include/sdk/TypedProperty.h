#pragma once

// Ready-made properties: the five typed forms and blocks of raw bytes. A property holds its value
// itself or is bound to a member of the effect, which must outlive it. Threads: as sdk/Property.h
// says; an effect that reads a bound member while hosts set it takes care of that itself.

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "base_types/PropertyInfo.h"
#include "sdk/Property.h"

namespace base_types {

inline constexpr std::uint32_t kReadWrite = eAccessRead | eAccessWrite;

// What a property tells of itself besides its value.
template <class T>
struct PropertyOptions {
    std::optional<T> defaultValue = {};         // also the value that the property starts with
    std::optional<std::pair<T, T>> range = {};  // smallest and largest value
    std::uint32_t access = kReadWrite;          // PropertyAccess bits
    std::uint32_t extra = 0;                    // second word of PropertyInfo
};

// A property of one of the five typed forms. The range is told, not enforced: an effect that cannot
// work with a value outside it clamps where it uses the value.
template <class T>
class TypedProperty : public Property {
    static_assert(kTypeOf<T> != ePropertyRaw, "int32_t, float, bool, int64_t or std::wstring");

public:
    // Holds its value itself, at first the default value if there is one, else T().
    explicit TypedProperty(PropertyOptions<T> options = {})
        : TypedProperty(nullptr, std::move(options)) {}

    // Bound to `*value`, which is set to the default value if there is one. Null: as above.
    explicit TypedProperty(T* value, PropertyOptions<T> options = {})
        : Property(
              {static_cast<std::int32_t>(sizeof(T)), options.extra, options.access, kTypeOf<T>},
              value ? value : &own_),
          options_(std::move(options)) {
        if (options_.defaultValue) {
            *Typed() = *options_.defaultValue;
        }
    }

    void* Value() override { return Storage(); }

    void Assign(const void* value) override {
        if constexpr (std::is_same_v<T, bool>) {
            // The byte may come from a raw set, which stores any.
            *Typed() = *static_cast<const unsigned char*>(value) != 0;
        } else {
            *Typed() = *static_cast<const T*>(value);
        }
    }

    bool Range(void* min, void* max) override {
        if (!options_.range) {
            return false;
        }
        *static_cast<T*>(min) = options_.range->first;
        *static_cast<T*>(max) = options_.range->second;
        return true;
    }

    bool Default(void* out) override {
        if (!options_.defaultValue) {
            return false;
        }
        *static_cast<T*>(out) = *options_.defaultValue;
        return true;
    }

private:
    T* Typed() { return static_cast<T*>(Storage()); }

    T own_{};
    PropertyOptions<T> options_;
};

// A block of bytes of a fixed size, reached through the raw operations alone.
class RawProperty : public Property {
public:
    // Holds `size` bytes itself, at first zero.
    explicit RawProperty(std::int32_t size, std::uint32_t access = kReadWrite)
        : RawProperty(std::vector<unsigned char>(static_cast<std::size_t>(size > 0 ? size : 0)),
                      access) {}

    // Bound to `size` bytes at `bytes`; to none when `size` is negative.
    RawProperty(void* bytes, std::int32_t size, std::uint32_t access = kReadWrite)
        : Property({size > 0 ? size : 0, 0, access, ePropertyRaw}, bytes) {}

    void* Value() override { return Storage(); }

    // Copies Info().size bytes.
    void Assign(const void* value) override {
        std::memmove(Storage(), value, static_cast<std::size_t>(Info().size));
    }
    bool Range(void*, void*) override { return false; }
    bool Default(void*) override { return false; }

private:
    RawProperty(std::vector<unsigned char> own, std::uint32_t access)
        : Property({static_cast<std::int32_t>(own.size()), 0, access, ePropertyRaw}, own.data()),
          own_(std::move(own)) {}

    std::vector<unsigned char> own_;
};

}  // namespace base_types
