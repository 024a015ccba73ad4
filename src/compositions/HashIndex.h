#pragma once

// Finds elements of a growing list by content: maps a hash to positions in the list, which stays
// the caller's. Look-ups cost the same however long the list is; the hash is seeded per process, so
// a script cannot be written to collide.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace compositions {

// Chainable: pass one text's hash as the seed of the next.
std::uint64_t HashOf(std::wstring_view text);
std::uint64_t HashOf(std::wstring_view text, std::uint64_t seed);

class HashIndex {
public:
    // Whether a position with this hash satisfies the predicate.
    template <typename Predicate>
    bool Contains(std::uint64_t hash, Predicate&& matches) const {
        if (slots_.empty()) return false;
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t at = hash & mask; slots_[at].position != kFree; at = (at + 1) & mask) {
            if (slots_[at].tag == Tag(hash) && matches(slots_[at].position)) return true;
        }
        return false;
    }

    // Inserts the position unless one that satisfies the predicate is there; answers whether it
    // did. Equal elements go in once: a run of them would make every look-up walk it. Positions
    // are below 2^32 - 1.
    template <typename Predicate>
    bool Insert(std::uint64_t hash, std::size_t position, Predicate&& matches) {
        if (Contains(hash, matches)) return false;
        Add(hash, position);
        return true;
    }

private:
    static constexpr std::uint32_t kFree = ~std::uint32_t{0};

    // Place and comparison use the same 32 bits, so that the table can grow without the elements.
    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t position = kFree;
    };

    static std::uint32_t Tag(std::uint64_t hash) { return static_cast<std::uint32_t>(hash); }
    void Add(std::uint64_t hash, std::size_t position);
    void Grow();

    std::vector<Slot> slots_;  // a power of two, at most half full
    std::size_t used_ = 0;
};

}  // namespace compositions
