#include "compositions/ScriptCursor.h"

namespace compositions {

bool ScriptCursor::FindHeader(Section section, std::uint32_t rule) {
    script_.SetPosition(0);
    if (!report_) return script_.find_expression(rule, false);
    report_->OnHeaderSearch(section, rule);
    if (!script_.find_expression(rule, true)) return false;
    const std::size_t begin = script_.Position();
    Pieces pieces;
    if (!script_.get_expression(rule, pieces)) return false;
    report_->OnHeader(begin, script_.Position());
    return true;
}

std::size_t ScriptCursor::LeadingPieces(std::uint32_t rule) {
    const std::size_t end = script_.Position();
    script_.SetPosition(begin_);
    Pieces pieces;
    script_.get_expression(rule, pieces);
    script_.SetPosition(end);
    return pieces.size();
}

bool ScriptCursor::ReportedMatch(std::uint32_t rule, Pieces& pieces) {
    if (!script_.get_expression(rule, pieces)) {
        report_->OnMismatch(rule);
        return false;
    }
    report_->OnMatch(rule, begin_, script_.Position());
    return true;
}

bool ScriptCursor::ReportedMatchMore(std::uint32_t rule, Pieces& pieces) {
    if (!script_.get_expression(rule, pieces)) {
        report_->OnMismatch(rule);
        return false;
    }
    report_->OnMatchMore(script_.Position());
    return true;
}

}  // namespace compositions
