#include "compositions/ReadingReport.h"

#include <algorithm>

#include "compositions/language/ScriptCharacters.h"

namespace compositions {

bool ReadingObserver::WantsExpected() const {
    return true;
}
void ReadingObserver::OnText(std::wstring_view) {}
void ReadingObserver::OnHeader(Section, ByteRange) {}
void ReadingObserver::OnStatement(const Statement&) {}
void ReadingObserver::OnSectionEnd(const SectionEnd&) {}

void ReadingReport::OnHeaderSearch(Section section, std::uint32_t rule) {
    section_ = section;
    begin_ = end_ = text_.size();  // where the search ends without a header
    mismatches_.assign(1, rule);
    isRefused_ = false;
    culprit_.clear();
}

void ReadingReport::OnHeader(std::size_t begin, std::size_t end) {
    begin_ = begin;
    end_ = end;
    mismatches_.clear();
    observer_.OnHeader(section_, RangeOf(begin, end));
}

void ReadingReport::OnMatch(std::uint32_t rule, std::size_t begin, std::size_t end,
                            const Pieces& pieces) {
    pieces_.assign(pieces.begin(), pieces.end());
    rule_ = rule;
    begin_ = begin;
    end_ = end;
    mismatches_.clear();
}

void ReadingReport::OnMatchMore(std::size_t end, const Pieces& pieces) {
    pieces_.insert(pieces_.end(), pieces.begin(), pieces.end());
    end_ = end;
    mismatches_.clear();
}

void ReadingReport::OnMismatch(std::uint32_t rule) {
    mismatches_.push_back(rule);
}

void ReadingReport::OnStatement(StatementOutcome outcome) {
    observer_.OnStatement({section_, rule_, RangeOf(begin_, end_), outcome, pieces_});
}

void ReadingReport::OnRefusal(std::wstring_view culprit) {
    isRefused_ = true;
    culprit_ = culprit;
    OnStatement(StatementOutcome::kRefused);
}

void ReadingReport::OnSectionEnd(std::int32_t status) {
    const std::size_t offset = isRefused_ ? begin_ : end_;
    if (isRefused_) mismatches_.clear();
    observer_.OnSectionEnd({section_, status, OffsetOfText(offset), mismatches_, culprit_});
}

// Of the first character from the position on that is no blank.
std::uint64_t ReadingReport::OffsetOfText(std::size_t position) const {
    return offsets_.At(
        std::min(text_.find_first_not_of(characters::kBlanks, position), text_.size()));
}

ByteRange ReadingReport::RangeOf(std::size_t begin, std::size_t end) const {
    const std::uint64_t from = OffsetOfText(begin);
    const std::uint64_t to = end == 0 ? 0 : offsets_.At(end - 1) + 1;
    return {from, std::max(from, to)};
}

}  // namespace compositions
