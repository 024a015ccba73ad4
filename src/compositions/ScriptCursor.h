#pragma once

// What the section readers see of the script: find a header, match a statement, say what became of
// it. Tells an observer when there is one; without one that costs a test of a pointer.

#include <cstdint>
#include <string_view>

#include "compositions/ReadStatus.h"
#include "compositions/ReadingReport.h"
#include "compositions/TextForm.h"
#include "compositions/language/CompInterpreter.h"
#include "helpers/scripting/Pieces.h"

namespace compositions {

using Pieces = helpers::scripting::Pieces;

class ScriptCursor {
public:
    // Both stay the caller's; the report may be null.
    ScriptCursor(CompInterpreter& script, ReadingReport* report)
        : script_(script), report_(report) {}

    // Searches the whole script from its start; stands behind the header when it is there.
    bool FindHeader(Section section, std::uint32_t rule);

    // For whoever reads a section to match into: the sections share its memory.
    Pieces& Scratch() { return scratch_; }

    // Matches a statement here, and stands behind it. Otherwise nothing moves and there are no
    // pieces.
    bool Match(std::uint32_t rule, Pieces& pieces) {
        begin_ = script_.Position();
        if (report_) [[unlikely]]
            return ReportedMatch(rule, pieces);
        return script_.get_expression(rule, pieces);
    }
    // The same for a further part of the statement that was matched last.
    bool MatchMore(std::uint32_t rule, Pieces& pieces) {
        if (report_) [[unlikely]]
            return ReportedMatchMore(rule, pieces);
        return script_.get_expression(rule, pieces);
    }

    // Whether the piece, of the statement that was matched last, was written between quotes.
    bool IsQuoted(std::wstring_view piece) const;

    // What can follow; kAny for an observer who wants to hear of every rule.
    TextForm NextForm() const {
        return WantsEveryRule() ? TextForm::kAny : FormAt(script_.Text(), script_.Position());
    }
    TextForm NextAssignment() const {
        return WantsEveryRule() ? TextForm::kAny
                                : FormOfAssignment(script_.Text(), script_.Position());
    }

    // What became of the statement that was matched last. Refused returns the status given.
    void Taken() {
        if (report_) [[unlikely]]
            report_->OnStatement(StatementOutcome::kTaken);
    }
    void Skipped() {
        if (report_) [[unlikely]]
            report_->OnStatement(StatementOutcome::kSkipped);
    }
    std::int32_t Refused(std::int32_t status, std::wstring_view culprit = {}) {
        if (report_) [[unlikely]]
            report_->OnRefusal(culprit);
        return status;
    }

    // The section is over with this status, which is returned.
    std::int32_t End(std::int32_t status) {
        if (report_) [[unlikely]]
            report_->OnSectionEnd(status);
        return status;
    }

private:
    bool WantsEveryRule() const {
        if (report_) [[unlikely]]
            return report_->WantsExpected();
        return false;
    }
    bool ReportedMatch(std::uint32_t rule, Pieces& pieces);
    bool ReportedMatchMore(std::uint32_t rule, Pieces& pieces);

    CompInterpreter& script_;
    Pieces scratch_;
    ReadingReport* report_;
    std::size_t begin_ = 0;  // of the statement that was matched last
};

}  // namespace compositions
