#include "helpers/scripting/TextScanner.h"

#include <algorithm>

namespace helpers::scripting {

TextScanner::Runs& TextScanner::RunsOf(const CharacterSet& set) {
    if (runs_.empty()) runs_.resize(program_->sets.Count());
    return runs_[set.index];
}

// `known`: no character of the set stands from `from` up to there.
std::size_t TextScanner::FindBeyond(const CharacterSet& set, std::size_t from, std::size_t known) {
    if (!runs_.empty()) {
        const Runs& runs = runs_[set.index];
        if (from >= runs.lastBegin && from < runs.lastEnd) return runs.lastEnd;
    }
    const std::size_t limit = std::min(text_.size(), from + kNearby);
    for (; known < limit; ++known) {
        if (set.Has(text_[known])) return known;
    }
    return known == text_.size() ? kNoPosition : FindFar(set, from, known);
}

std::size_t TextScanner::FindFar(const CharacterSet& set, std::size_t from, std::size_t known) {
    Runs& runs = RunsOf(set);
    const auto next = runs.beginByEnd.lower_bound(known);
    const bool isKnown = next != runs.beginByEnd.end();
    const std::size_t limit = isKnown ? std::min(next->second, text_.size()) : text_.size();
    while (known < limit && !set.Has(text_[known])) ++known;
    std::size_t end = known < text_.size() ? known : kNoPosition;
    if (isKnown && known >= limit) {
        end = next->first;
        next->second = std::min(next->second, from);
        runs.lastBegin = next->second;
    } else {
        runs.beginByEnd.emplace(end, from);
        runs.lastBegin = from;
    }
    runs.lastEnd = end;
    return end;
}

std::size_t TextScanner::FindCandidate(const Entry& entry, std::size_t from) {
    if (!runs_.empty()) {
        const auto& known = runs_[entry.first.index].beginByEnd;
        const auto next = known.lower_bound(from);
        if (next != known.end() && next->second <= from) return next->first;
    }
    std::size_t found = from;
    if (entry.onlyFirst != 0) {
        found = text_.find(entry.onlyFirst, from);
    } else {
        while (found < text_.size() && !entry.first.Has(text_[found])) ++found;
        if (found >= text_.size()) found = kNoPosition;
    }
    if (std::min(found, text_.size()) - from > kFarCandidate) {
        RunsOf(entry.first).beginByEnd[found] = from;
    }
    return found;
}

}  // namespace helpers::scripting
