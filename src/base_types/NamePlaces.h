#pragma once

// Where a property set found a name the last time, so that names that are asked for in turn need no
// search. Only ever a hint: the entry says whether it bears the name. What is not remembered, or
// has moved since, is searched for.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace base_types {

inline bool SameName(const std::wstring& left, const std::wstring& right) {
    return left.size() == right.size() &&
           std::memcmp(left.data(), right.data(), left.size() * sizeof(wchar_t)) == 0;
}

// Every character counts. Sixteen bytes at a time, in two strands that do not wait for each other.
inline std::uint64_t HashName(const std::wstring& name) {
    constexpr std::uint64_t kOdd[] = {0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F};
    const auto* text = reinterpret_cast<const char*>(name.data());
    const std::size_t bytes = name.size() * sizeof(wchar_t);
    const auto word = [text](std::size_t offset) {
        std::uint64_t value;
        std::memcpy(&value, text + offset, sizeof value);
        return value;
    };
    std::uint64_t strands[] = {bytes, 0};
    const auto take = [&](std::size_t offset) {
        strands[0] = (strands[0] ^ word(offset)) * kOdd[0];
        strands[1] = (strands[1] ^ word(offset + 8)) * kOdd[1];
    };
    if (bytes < 16) {
        for (const wchar_t character : name) {
            strands[0] = (strands[0] ^ static_cast<std::uint64_t>(character)) * kOdd[0];
        }
    } else {
        for (std::size_t offset = 0; offset + 16 < bytes; offset += 16) take(offset);
        take(bytes - 16);  // may overlap the one before
    }
    const std::uint64_t mixed = strands[0] ^ std::rotl(strands[1], 32);
    return mixed ^ mixed >> 29;
}

// A view of a set's memory. A slot holds 0, or the upper part of a name's hash and, from 1 on, the
// index of its entry. Behind the slots stands the number of entries that the set had: entries move
// when there are more of them, and what was remembered is then worth nothing.
class NamePlaces {
public:
    NamePlaces(std::vector<std::uint32_t>& slots, std::size_t count)
        : slots_(slots), count_(static_cast<std::uint32_t>(count)) {}

    // The first remembered index for which `bearsName` holds; kNone when there is none.
    template <class Predicate>
    std::size_t Find(std::uint64_t hash, Predicate bearsName) const {
        if (!IsUpToDate()) return kNone;
        for (std::size_t step = 0; step != kWindow; ++step) {
            const std::uint32_t slot = slots_[Place(hash, step)];
            if (slot == 0) return kNone;
            const std::size_t index = (slot & kIndexMask) - 1;
            if ((slot & ~kIndexMask) == Tag(hash) && bearsName(index)) return index;
        }
        return kNone;
    }

    // Takes a free slot, else that of another name; without memory, none. Entries beyond 65,535 are
    // not remembered.
    void Remember(std::uint64_t hash, std::size_t index) {
        if (index >= kIndexMask || !Prepare()) return;
        std::size_t place = Place(hash, 0);
        for (std::size_t step = 0; step != kWindow; ++step) {
            if (slots_[Place(hash, step)] == 0) {
                place = Place(hash, step);
                break;
            }
        }
        slots_[place] = Tag(hash) | static_cast<std::uint32_t>(index + 1);
    }

    static constexpr std::size_t kNone = ~std::size_t{0};

private:
    static constexpr std::uint32_t kIndexMask = 0xFFFF;
    static constexpr std::size_t kWindow = 4;    // slots in which a name may lie
    static constexpr std::size_t kSpacious = 4;  // slots for each entry

    static std::uint32_t Tag(std::uint64_t hash) {
        return static_cast<std::uint32_t>(hash >> 32) & ~kIndexMask;
    }
    // The number of slots is a power of 2.
    std::size_t Place(std::uint64_t hash, std::size_t step) const {
        return (static_cast<std::size_t>(hash) + step) & (slots_.size() - 2);
    }
    bool IsUpToDate() const { return !slots_.empty() && slots_.back() == count_; }
    bool Prepare() {
        if (IsUpToDate()) return true;
        try {
            slots_.assign(std::bit_ceil(count_ * kSpacious) + 1, 0);
            slots_.back() = count_;
        } catch (const std::bad_alloc&) {
            slots_.clear();
        }
        return !slots_.empty();
    }

    std::vector<std::uint32_t>& slots_;
    std::uint32_t count_;
};

}  // namespace base_types
