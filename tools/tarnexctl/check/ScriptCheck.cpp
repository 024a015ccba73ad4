#include "check/ScriptCheck.h"

#include <algorithm>
#include <optional>

#include "check/Comments.h"
#include "check/EndCauses.h"
#include "check/FileFaults.h"
#include "check/Headers.h"
#include "check/Refusals.h"
#include "check/SectionEnds.h"
#include "check/SourceText.h"
#include "check/Statements.h"
#include "check/Subject.h"
#include "check/Uses.h"
#include "compositions/language/ScriptCharacters.h"
#include "compositions/language/Symbols.h"

namespace tarnexctl {
namespace {

using compositions::CompositionScript;
using compositions::kSectionCount;

// Whether the headers and the statements behind them are all that the script holds, and nothing of
// it was refused or passed over.
bool IsReadAsAWhole(const Subject& subject) {
    const Recording& record = subject.Record();
    if (subject.Status() != compositions::status::kRead || !record.AllTaken()) return false;
    std::uint64_t first = subject.Bytes().size();
    for (std::size_t i = 0; i < kSectionCount; ++i) {
        const RecordedSection& section = record.Of(static_cast<Section>(i));
        if (!section.found) continue;
        if (!subject.IsWhole(static_cast<Section>(i))) return false;
        first = std::min(first, section.header.begin);
        for (std::size_t j = 0; j < kSectionCount; ++j) {  // a header within a text
            const RecordedSection& other = record.Of(static_cast<Section>(j));
            const std::uint64_t begin = other.header.begin;
            if (other.found && begin > section.header.begin && begin < section.end) return false;
        }
    }
    const std::wstring_view text = subject.Text();
    const std::size_t start =
        text.find_first_not_of(compositions::characters::kBlanks, subject.FirstPosition());
    return start != text.npos && subject.OffsetAt(start) == first;
}

// What is wrong with a script that was not read as a whole.
void CheckReading(const Subject& subject, std::vector<CommentTrouble>& troubles,
                  Diagnostics& diagnostics) {
    const SourceText source(subject.Bytes());
    const Headers headers(subject, source);
    CheckReadStatus(subject, headers, source, diagnostics);
    CheckIgnoredStatuses(subject, headers, source, diagnostics);
    CheckSectionEnds(subject, headers, troubles, diagnostics);
    headers.Check(diagnostics);
}

void CheckStatements(const Subject& subject, Diagnostics& diagnostics) {
    CheckSetupStatements(subject, diagnostics);
    CheckSourceStatements(subject, diagnostics);
    CheckAccessWords(subject, diagnostics);
    CheckEnvelopeStatements(subject, diagnostics);
    CheckTimelineStatements(subject, diagnostics);
    CheckTargets(subject, diagnostics);
    CheckNumbers(subject, diagnostics);
    CheckLostBlanks(subject, diagnostics);
    CheckRedeclarations(subject, diagnostics);
    CheckWiring(subject, diagnostics);
    CheckPropertyUses(subject, diagnostics);
    CheckEnvelopeUses(subject, diagnostics);
}

// A section that stands in a comment and nowhere else.
void CheckCommentedHeaders(const Subject& subject, Diagnostics& diagnostics) {
    for (const CommentedHeader& header : FindCommentedHeaders(subject.Bytes())) {
        const RecordedSection& section = subject.Record().Of(header.section);
        const bool mustBeThere = header.section <= Section::kStructure;  // and was missed already
        if (section.found || !section.wasLookedFor || mustBeThere) continue;
        diagnostics.Add("C317", header.range,
                        std::string("[") + SectionKeyword(header.section) +
                            "] stands in a comment: the section is not there");
    }
}

void FillTitle(const Subject& subject, ScriptVerdict& verdict) {
    if (subject.Status() != compositions::status::kRead) return;
    verdict.title = std::wstring(subject.Description().name) + L'\\' +
                    std::wstring(subject.Description().category);
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kSetup)) {
        const auto pieces = subject.Record().Pieces(statement);
        if (statement.rule != compositions::R16) continue;
        if (compositions::IsKeyword(pieces[0], L"NAME")) {
            verdict.name = subject.RangeOf(statement, pieces[1]);
        }
    }
}

}  // namespace

ScriptVerdict ScriptChecker::Check(std::string_view bytes, const std::function<void()>& onStage) {
    const auto report = [&] {
        if (onStage) onStage();
    };
    ScriptVerdict verdict;
    Diagnostics& diagnostics = verdict.diagnostics;
    recording_.Start(false);
    std::optional<CompositionScript> script(std::in_place, bytes, &recording_);
    std::optional<Subject> subject(std::in_place, bytes, *script, recording_);
    verdict.readStatus = script->GetReadStatus();
    verdict.sections = script->GetSectionStatuses();
    FillTitle(*subject, verdict);
    if (CheckFileFaults(bytes, diagnostics)) return verdict;

    report();
    std::vector<CommentTrouble> troubles = FindCommentTrouble(bytes);
    if (!IsReadAsAWhole(*subject)) {
        subject.reset();
        recording_.Start(true);
        script.emplace(bytes, &recording_);
        subject.emplace(bytes, *script, recording_);
        report();
        CheckReading(*subject, troubles, diagnostics);
    }
    report();
    for (const CommentTrouble& trouble : troubles) AddTrouble(trouble, {}, diagnostics);
    CheckStatements(*subject, diagnostics);
    CheckCommentedHeaders(*subject, diagnostics);
    diagnostics.Sort();
    return verdict;
}

}  // namespace tarnexctl
