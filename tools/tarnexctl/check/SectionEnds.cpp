#include "check/SectionEnds.h"

#include <algorithm>

#include "check/EndCauses.h"
#include "check/Expected.h"
#include "compositions/language/CompInterpreter.h"
#include "compositions/language/ScriptCharacters.h"

namespace tarnexctl {
namespace {

// The trouble that lies between the last statement that was read and the text that could not be.
const CommentTrouble* TroubleAt(const std::vector<CommentTrouble>& troubles, std::uint64_t from,
                                std::uint64_t to) {
    for (const CommentTrouble& trouble : troubles) {
        const bool joins = trouble.kind == CommentTrouble::Kind::kJoinsWords;
        const std::uint64_t begin = joins ? trouble.joined.begin : trouble.range.begin;
        if (begin >= from && begin <= to) return &trouble;
    }
    return nullptr;
}

// The word or mark that stands there.
std::size_t TokenEnd(std::wstring_view text, std::size_t position) {
    const auto stop = text.find_first_of(compositions::characters::kAfterIdent, position);
    return std::max(position + 1, std::min(stop, text.size()));
}

class EndCheck {
public:
    EndCheck(const Subject& subject, const Headers& headers, std::vector<CommentTrouble>& troubles,
             Diagnostics& diagnostics)
        : subject_(subject),
          headers_(headers),
          troubles_(troubles),
          diagnostics_(diagnostics),
          interpreter_(subject.Bytes()) {}

    void Check(Section section) {
        const RecordedSection& record = subject_.Record().Of(section);
        if (!record.found || record.end >= subject_.Bytes().size()) return;
        if (record.expected.empty() || headers_.IsWithinText(section)) return;
        SectionStop stop;
        stop.section = section;
        stop.position = subject_.PositionOf(record.end);
        if (headers_.At(stop.position) != nullptr) return;
        const auto statements = subject_.Record().Statements(section);
        if (!statements.empty()) stop.previous = &statements.back();
        // A value that is none is told as such.
        if (section == Section::kTimeline && stop.previous &&
            stop.previous->outcome == StatementOutcome::kSkipped) {
            return;
        }
        stop.furthest = FindFurthestMatch(interpreter_, record.expected, stop.position);
        // A match further on is none of the section's: the statement in front of it was skipped.
        stop.begin = stop.furthest.position == 0 ? stop.position : stop.furthest.position;
        stop.end = TokenEnd(subject_.Text(), stop.begin);
        Say(stop);
    }

private:
    void Say(const SectionStop& stop) {
        const std::uint64_t end = subject_.Record().Of(stop.section).end;
        std::vector<std::string> notRead = headers_.NotRead(end);
        const std::uint64_t from = stop.previous ? stop.previous->range.begin : end;
        const std::uint64_t to = subject_.RangeOf(stop.begin, stop.end).end;
        if (const CommentTrouble* const trouble = TroubleAt(troubles_, from, to)) {
            AddTrouble(*trouble, notRead, diagnostics_);
            troubles_.erase(troubles_.begin() + (trouble - troubles_.data()));
            return;
        }
        if (AddCause(subject_, stop, notRead, diagnostics_)) return;
        const bool atStart = stop.begin == stop.position;
        const std::wstring_view found = subject_.Text().substr(stop.begin, stop.end - stop.begin);
        std::vector<std::string> help =
            DidYouMean(MeantName(found, ExpectedKeywords(stop.furthest)));
        if (help.empty() && WantsQuotes(stop.furthest, found)) {
            help.push_back("texts stand in quotes: " + Quoted(found));
        }
        help.insert(help.end(), notRead.begin(), notRead.end());
        const std::string name = SectionKeyword(stop.section);
        diagnostics_.Add("C301", subject_.RangeOf(stop.begin, stop.end),
                         name + " ends here: " + Quoted(found) +
                             (atStart ? " begins no statement of it" : " does not belong here"),
                         help,
                         atStart ? StatementForms(stop.section) : ExpectedWords(stop.furthest));
    }

    const Subject& subject_;
    const Headers& headers_;
    std::vector<CommentTrouble>& troubles_;
    Diagnostics& diagnostics_;
    compositions::CompInterpreter interpreter_;
};

}  // namespace

void CheckSectionEnds(const Subject& subject, const Headers& headers,
                      std::vector<CommentTrouble>& troubles, Diagnostics& diagnostics) {
    EndCheck check(subject, headers, troubles, diagnostics);
    for (std::size_t i = 0; i < compositions::kSectionCount; ++i) {
        check.Check(static_cast<Section>(i));
    }
}

}  // namespace tarnexctl
