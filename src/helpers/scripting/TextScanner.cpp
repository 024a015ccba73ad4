#include "helpers/scripting/TextScanner.h"

#include <algorithm>

#include "helpers/scripting/AsciiCase.h"

namespace helpers::scripting {

TextScanner::Runs& TextScanner::RunsOf(const CharacterSet& set) {
    if (runs_.empty()) runs_.resize(setCount_);
    return runs_[set.index];
}

std::size_t TextScanner::SkipSome(std::size_t from) {
    for (std::size_t at = from; at < size_; ++at) {
        if (!blanks_.Has(text_[at])) return at;
        if (at == from + kShort) return std::min(FindBeyond(*notBlanks_, from, at), size_);
    }
    return size_;
}

LexemOutcome TextScanner::Read(const CompiledLexem& lexem, std::size_t first, LexemSpan& span) {
    if (!lexem.start.Has(text_[first])) return LexemOutcome::kWrongStart;
    std::size_t stop = first + 1;
    if (lexem.oneBeforeBlank) {
        if (stop >= size_ || !lexem.stop.Has(text_[stop])) return LexemOutcome::kWrongStart;
    } else {
        stop = FindBeyond(lexem.stop, first, first);
        if (stop == kNoPosition) return LexemOutcome::kNoStop;
    }
    span.begin = lexem.keepFirst ? first : first + 1;
    const std::size_t end = lexem.keepStop ? stop + 1 : stop;
    span.length = end > span.begin ? end - span.begin : 1;  // a lexem is never empty
    span.next = first + span.length + (lexem.keepStop || lexem.skipStop ? 1 : 0);
    return LexemOutcome::kRead;
}

// `known`: no character of the set stands from `from` up to there.
std::size_t TextScanner::FindBeyond(const CharacterSet& set, std::size_t from, std::size_t known) {
    if (known >= size_) return kNoPosition;
    if (!runs_.empty()) {
        const Runs& runs = runs_[set.index];
        if (from >= runs.lastBegin && from < runs.lastEnd) return runs.lastEnd;
    }
    const std::size_t limit = std::min(size_, from + kNearby);
    for (; known < limit; ++known) {
        if (set.Has(text_[known])) return known;
    }
    return known == size_ ? kNoPosition : FindFar(set, from, known);
}

std::size_t TextScanner::FindFar(const CharacterSet& set, std::size_t from, std::size_t known) {
    Runs& runs = RunsOf(set);
    const auto next = runs.beginByEnd.lower_bound(known);
    const bool isKnown = next != runs.beginByEnd.end();
    const std::size_t limit = isKnown ? std::min(next->second, size_) : size_;
    while (known < limit && !set.Has(text_[known])) ++known;
    std::size_t end = known < size_ ? known : kNoPosition;
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

std::size_t TextScanner::FindOnlyBeyond(const CompiledLexem& lexem, std::size_t from) {
    const std::size_t known = std::min(from + kNearby, size_);
    const std::size_t found = Text().substr(0, known).find(lexem.onlyStop, from);
    return found != kNoPosition ? found : FindBeyond(lexem.stop, from, known);
}

std::span<const Candidate> TextScanner::FindCandidates(const Entry& entry, std::size_t from) {
    if (candidatesOf_ != entry.beforeKeyword) ListCandidates(entry);
    const auto next = std::ranges::lower_bound(candidates_, from, {}, &Candidate::position);
    return {next, candidates_.end()};
}

void TextScanner::ListCandidates(const Entry& entry) {
    const CompiledLexem& lexem = *entry.beforeKeyword;
    candidatesOf_ = nullptr;  // until the list is whole
    candidates_.clear();
    const std::wstring_view text = Text();
    for (std::size_t at = text.find(entry.onlyFirst); at != text.npos;
         at = text.find(entry.onlyFirst, at + 1)) {
        const std::size_t end = FindEnd(lexem, at);
        if (end == kNoPosition) continue;
        const wchar_t behind = UpperAscii(text_[SkipBlanks(end)]);
        candidates_.push_back({static_cast<std::uint32_t>(at), behind});
    }
    candidatesOf_ = &lexem;
}

std::size_t TextScanner::FindCandidate(const Entry& entry, std::size_t from) {
    if (!runs_.empty()) {
        const auto& known = runs_[entry.first.index].beginByEnd;
        const auto next = known.lower_bound(from);
        if (next != known.end() && next->second <= from) return next->first;
    }
    std::size_t found = from;
    while (found < size_ && !entry.first.Has(text_[found])) ++found;
    if (found >= size_) found = kNoPosition;
    if (std::min(found, size_) - from > kFarCandidate) {
        RunsOf(entry.first).beginByEnd[found] = from;
    }
    return found;
}

}  // namespace helpers::scripting
