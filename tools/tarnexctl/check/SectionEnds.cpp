#include "check/SectionEnds.h"

#include <algorithm>

#include "check/EndCauses.h"
#include "check/Expected.h"
#include "compositions/language/CompInterpreter.h"
#include "compositions/language/ScriptCharacters.h"
#include "compositions/language/Symbols.h"

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

// The word, text or mark that stands there.
std::size_t TokenEnd(std::wstring_view text, std::size_t position) {
    if (position < text.size() && text[position] == L'"') {
        const auto close = text.find_first_of(L"\"\r\n", position + 1);
        if (close != text.npos && text[close] == L'"') return close + 1;
    }
    const auto stop = text.find_first_of(compositions::characters::kAfterIdent, position);
    return std::min(std::max(position + 1, stop), text.size());
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
        if (record.status == compositions::status::kNoOutput) return;  // told as well
        stop.furthest = FindFurthestMatch(interpreter_, record.expected, stop.position);
        // A match further on is none of the section's: the statement in front of it was skipped.
        stop.begin = stop.furthest.position == 0 ? stop.position : stop.furthest.position;
        stop.begin = std::min(stop.begin, subject_.Text().size());
        stop.end = TokenEnd(subject_.Text(), stop.begin);
        // A value that is none is told as such, and only a cause is added.
        const bool noValue = section == Section::kTimeline && stop.previous &&
                             stop.previous->outcome == StatementOutcome::kSkipped;
        if (noValue) {
            static_cast<void>(AddCause(subject_, stop, {}, diagnostics_));
        } else {
            Say(stop);
        }
    }

private:
    // What may be missing in front of the text that does not belong there.
    std::vector<std::string> Advice(const SectionStop& stop, std::wstring_view found) const {
        const std::wstring_view text = subject_.Text();
        const std::size_t last = text.find_last_not_of(compositions::characters::kBlanks,
                                                       stop.begin == 0 ? 0 : stop.begin - 1);
        const bool inside = stop.begin > stop.position && last != text.npos;
        if (inside && text.substr(last, stop.begin - last).find(L'\n') != text.npos) {
            return {"the line in front of it may lack its end"};
        }
        if (WantsQuotes(stop.furthest, found)) return {"texts stand in quotes: " + Quoted(found)};
        const std::uint32_t before = stop.previous ? stop.previous->rule : 0;
        if (before == compositions::R46 && found == L".") {
            return {"targets are separated by commas"};
        }
        const bool behindPath = before == compositions::R34 || before == compositions::R35;
        if (behindPath && (found.starts_with(L'"') || found.starts_with(L'%'))) {
            return {"the parts of a path are joined by \"+\""};
        }
        return {};
    }

    void Say(const SectionStop& stop) {
        const std::uint64_t end = subject_.Record().Of(stop.section).end;
        std::vector<std::string> notRead = headers_.NotRead(end);
        const std::uint64_t from = stop.previous ? stop.previous->range.begin : end;
        const std::uint64_t to = subject_.RangeOf(stop.begin, stop.end).end;
        if (const CommentTrouble* const trouble = TroubleAt(troubles_, from, to)) {
            notRead.insert(notRead.begin(),
                           std::string(SectionKeyword(stop.section)) + " ends here");
            AddTrouble(*trouble, notRead, diagnostics_);
            troubles_.erase(troubles_.begin() + (trouble - troubles_.data()));
            return;
        }
        if (AddCause(subject_, stop, notRead, diagnostics_)) return;
        if (stop.begin == subject_.Text().size()) {
            diagnostics_.Add("C301", subject_.RangeOf(stop.position, stop.position + 1),
                             std::string(SectionKeyword(stop.section)) +
                                 " ends here: the script ends within this statement",
                             {}, ExpectedWords(stop.furthest));
            return;
        }
        const bool atStart = stop.begin == stop.position;
        const std::wstring_view found = subject_.Text().substr(stop.begin, stop.end - stop.begin);
        std::vector<std::string> help = DidYouMean(found, ExpectedKeywords(stop.furthest));
        if (help.empty()) help = Advice(stop, found);
        help.insert(help.end(), notRead.begin(), notRead.end());
        const std::string name = SectionKeyword(stop.section);
        const bool isText = found.size() > 1 && found.front() == L'"';
        diagnostics_.Add("C301", subject_.RangeOf(stop.begin, stop.end),
                         name + " ends here: " + (isText ? Unquoted(found) : Quoted(found)) +
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
