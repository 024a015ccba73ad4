#include "helpers/scripting/TextScanner.h"

#include <algorithm>

namespace helpers::scripting {

// `known`: no character of the set stands from `from` up to there.
std::size_t TextScanner::FindFar(const CharacterSet& set, std::size_t from, std::size_t known) {
    if (runs_.size() <= set.index) runs_.resize(program_->sets.Count());
    Runs& runs = runs_[set.index];
    const auto next = runs.lower_bound(known);
    const std::size_t limit =
        next == runs.end() ? text_.size() : std::min(next->second.begin, text_.size());
    for (std::size_t index = known; index < limit; ++index) {
        if (!set.Has(text_[index])) continue;
        runs.emplace(index, Run{from});
        return index;
    }
    if (next == runs.end()) {
        runs.emplace(kNoPosition, Run{from});
        return kNoPosition;
    }
    next->second.begin = std::min(next->second.begin, from);
    return next->first;
}

}  // namespace helpers::scripting
