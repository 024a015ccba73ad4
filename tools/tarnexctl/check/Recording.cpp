#include "check/Recording.h"

#include <functional>

namespace tarnexctl {

void Recording::Start(bool wantsExpected) {
    wantsExpected_ = wantsExpected;
    allTaken_ = true;
    text_ = {};
    sections_ = {};
    statements_.clear();
    pieces_.clear();
    joined_.clear();
}

void Recording::OnHeader(Section section, ByteRange range) {
    RecordedSection& record = At(section);
    record.found = true;
    record.header = range;
    record.firstStatement = statements_.size();
}

void Recording::OnStatement(const compositions::Statement& statement) {
    const std::less<const wchar_t*> before;
    const wchar_t* const begin = text_.data();
    const wchar_t* const end = begin + text_.size();
    statements_.push_back({statement.rule, statement.outcome, statement.range, pieces_.size(),
                           statement.pieces.size()});
    for (const std::wstring_view piece : statement.pieces) {
        const bool isInText = !before(piece.data(), begin) && before(piece.data(), end);
        pieces_.push_back(isInText ? piece : std::wstring_view());
        if (!isInText && !piece.empty()) {
            joined_.push_back({statements_.size() - 1, std::wstring(piece)});
        }
    }
    if (statement.outcome != StatementOutcome::kTaken) allTaken_ = false;
    ++At(statement.section).statementCount;
}

void Recording::OnSectionEnd(const compositions::SectionEnd& end) {
    RecordedSection& record = At(end.section);
    record.wasLookedFor = true;
    record.status = end.status;
    record.end = end.offset;
    if (wantsExpected_) record.expected.assign(end.expected.begin(), end.expected.end());
    record.culprit = end.culprit;
}

}  // namespace tarnexctl
