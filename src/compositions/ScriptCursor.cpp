#include "compositions/ScriptCursor.h"

#include "compositions/language/ScriptCharacters.h"

namespace compositions {

bool ScriptCursor::FindHeader(Section section, std::uint32_t rule) {
    script_.SetPosition(0);
    if (!report_) return script_.find_expression(rule, false);
    report_->OnHeaderSearch(section, rule);
    if (!script_.find_expression(rule, true)) return false;
    const std::size_t begin = script_.Position();
    if (!script_.get_expression(rule, scratch_)) return false;
    report_->OnHeader(begin, script_.Position());
    return true;
}

// Blanks may stand between the quote and the piece; only a string can be empty.
bool ScriptCursor::IsQuoted(std::wstring_view piece) const {
    if (piece.empty()) return true;
    const std::wstring& text = script_.Text();
    auto before = static_cast<std::size_t>(piece.data() - text.data());
    while (before > begin_ && characters::kBlanks.find(text[before - 1]) != std::wstring::npos) {
        --before;
    }
    return before > begin_ && text[before - 1] == L'"';
}

bool ScriptCursor::ReportedMatch(std::uint32_t rule, Pieces& pieces) {
    if (!script_.get_expression(rule, pieces)) {
        report_->OnMismatch(rule);
        return false;
    }
    report_->OnMatch(rule, begin_, script_.Position(), pieces);
    return true;
}

bool ScriptCursor::ReportedMatchMore(std::uint32_t rule, Pieces& pieces) {
    if (!script_.get_expression(rule, pieces)) {
        report_->OnMismatch(rule);
        return false;
    }
    report_->OnMatchMore(script_.Position(), pieces);
    return true;
}

}  // namespace compositions
