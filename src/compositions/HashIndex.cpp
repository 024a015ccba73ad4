#include "compositions/HashIndex.h"

#include <random>

namespace compositions {
namespace {

std::uint64_t Mix(std::uint64_t value) {
    value ^= value >> 32;
    value *= 0xD6E8FEB86659FD93u;
    return value ^ (value >> 32);
}

std::uint64_t ProcessSeed() {
    static const std::uint64_t seed = [] {
        std::random_device device;
        return (std::uint64_t{device()} << 32) ^ device();
    }();
    return seed;
}

}  // namespace

std::uint64_t HashOf(std::wstring_view text) {
    return HashOf(text, ProcessSeed());
}

std::uint64_t HashOf(std::wstring_view text, std::uint64_t seed) {
    std::uint64_t hash = seed;
    for (wchar_t character : text) hash = Mix(hash ^ static_cast<std::uint32_t>(character));
    return Mix(hash + text.size());
}

void HashIndex::Add(std::uint64_t hash, std::size_t position) {
    if (used_ * 2 >= slots_.size()) Grow();
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].position != kFree) at = (at + 1) & mask;
    slots_[at] = {Tag(hash), static_cast<std::uint32_t>(position)};
    ++used_;
}

void HashIndex::Grow() {
    std::vector<Slot> grown(slots_.empty() ? 32 : slots_.size() * 2);
    const std::size_t mask = grown.size() - 1;
    for (const Slot& slot : slots_) {
        if (slot.position == kFree) continue;
        std::size_t at = slot.tag & mask;
        while (grown[at].position != kFree) at = (at + 1) & mask;
        grown[at] = slot;
    }
    slots_ = std::move(grown);
}

}  // namespace compositions
