#pragma once

// What a node of the structure stands for.

#include <cstdint>
#include <string_view>
#include <unordered_set>

#include "compositions/CompositionDescription.h"

namespace tarnexctl {

enum class NodeKind : std::uint8_t {
    kEffect,
    kInput,
    kNumberedInput,
    kBitmap,
    kMovie,
    kMix,
    kUnknown,  // nothing declares it; archives alone hold such
};

// "numbered input"
const char* NodeKindWord(NodeKind kind);

// Answers by the order in which the script's reader looks names up. The description must outlive
// it.
class NodeKinds {
public:
    explicit NodeKinds(const compositions::CompositionDescription& description);

    NodeKind Of(const compositions::UpperName& name) const;

private:
    const compositions::CompositionDescription& description_;
    std::unordered_set<std::wstring_view> inputs_;
    std::unordered_set<std::wstring_view> mixes_;
};

}  // namespace tarnexctl
