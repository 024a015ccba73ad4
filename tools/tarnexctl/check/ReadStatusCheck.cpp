#include <string>

#include "check/Comments.h"
#include "check/Refusals.h"
#include "compositions/language/Symbols.h"

namespace tarnexctl {
namespace {

using namespace compositions;

const RecordedStatement* RefusedStatement(const Recording& record, Section section) {
    const auto statements = record.Statements(section);
    const bool refused =
        !statements.empty() && statements.back().outcome == StatementOutcome::kRefused;
    return refused ? &statements.back() : nullptr;
}

void AddMissing(const Subject& subject, const Headers& headers, Section section, const char* code,
                Diagnostics& diagnostics) {
    const std::string keyword = SectionKeyword(section);
    std::vector<std::string> help;
    if (const BracketedWord* const failed = headers.FailedHeaderOf(section)) {
        diagnostics.Add(code, subject.RangeOf(failed->begin, failed->end),
                        "no " + keyword + " section: this header does not count");
        return;
    }
    for (const CommentedHeader& commented : FindCommentedHeaders(subject.Bytes())) {
        if (commented.section != section) continue;
        diagnostics.Add(code, commented.range,
                        "no " + keyword + " section: its header stands in a comment");
        return;
    }
    const std::uint64_t start = subject.OffsetAt(subject.FirstPosition());
    diagnostics.Add(code, {start, start},
                    "no " + keyword + " section: there must be a [" + keyword + "]");
}

void AddMissingTitle(const Subject& subject, Diagnostics& diagnostics) {
    const ByteRange header = subject.Record().Of(Section::kSetup).header;
    if (subject.Description().name.empty()) {
        diagnostics.Add("C205", header, "SETUP gives the composition no name", {},
                        {"NAME = \"text\""});
    }
    if (subject.Description().category.empty()) {
        diagnostics.Add("C206", header, "SETUP gives the composition no category", {},
                        {"CATEGORY = \"text\""});
    }
}

void AddNoOutput(const Subject& subject, Diagnostics& diagnostics) {
    const RecordedSection& record = subject.Record().Of(Section::kStructure);
    const bool nothing = record.end >= subject.Bytes().size();
    const ByteRange range = nothing ? record.header : ByteRange{record.end, record.end + 1};
    diagnostics.Add("C207", range, "STRUCTURE does not open with OUTPUT =", {}, {"OUTPUT ="});
}

void AddUnknownName(const Subject& subject, const SourceText& source, Diagnostics& diagnostics) {
    const RecordedStatement* const refused =
        RefusedStatement(subject.Record(), Section::kStructure);
    if (refused == nullptr) return;
    const std::wstring_view name = subject.Record().Pieces(*refused)[0];
    std::vector<std::wstring_view> names = subject.NamesOf(Section::kSources);
    const std::vector<std::wstring_view> effects = subject.NamesOf(Section::kEffects);
    names.insert(names.end(), effects.begin(), effects.end());
    std::vector<std::string> help = DidYouMean(name, names);
    for (const Section section : {Section::kSources, Section::kEffects}) {
        if (subject.IsWhole(section)) continue;
        help.push_back(std::string(SectionKeyword(section)) + " ends early, at line " +
                       std::to_string(source.LineOf(subject.Record().Of(section).end)));
    }
    diagnostics.Add("C208", subject.RangeOf(*refused, name), "nothing declares " + Quoted(name),
                    help);
}

void AddFaultyParentheses(const Subject& subject, Diagnostics& diagnostics) {
    if (const auto* const refused = RefusedStatement(subject.Record(), Section::kStructure)) {
        const bool close = refused->rule == LxCloseParen;
        diagnostics.Add(close ? "C210" : "C211", refused->range,
                        close ? "no \"(\" belongs to this \")\""
                              : "this \"(\" does not stand directly behind a name");
        return;
    }
    std::vector<ByteRange> open;
    for (const RecordedStatement& lexem : subject.Record().Statements(Section::kStructure)) {
        if (lexem.rule == LxOpenParen) open.push_back(lexem.range);
        if (lexem.rule == LxCloseParen && !open.empty()) open.pop_back();
    }
    if (open.empty()) return;
    diagnostics.Add("C212", open.back(),
                    open.size() == 1 ? "this \"(\" is never closed"
                                     : "this \"(\" and " + std::to_string(open.size() - 1) +
                                           " more are never closed");
}

void AddFaultyStatement(const Subject& subject, Diagnostics& diagnostics) {
    const auto* const refused = RefusedStatement(subject.Record(), Section::kSetup);
    if (refused == nullptr) return AddFaultyParentheses(subject, diagnostics);
    const std::wstring_view value = subject.Record().Pieces(*refused)[1];
    diagnostics.Add("C209", subject.RangeOf(*refused, value),
                    "IS_FILTER is neither TRUE nor FALSE but " + Quoted(value),
                    DidYouMean(value, {L"TRUE", L"FALSE"}), {"TRUE", "FALSE"});
}

void AddWrongInputs(const Subject& subject, Diagnostics& diagnostics) {
    ByteRange range = subject.Record().Of(Section::kSetup).header;
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kSetup)) {
        const auto pieces = subject.Record().Pieces(statement);
        if (statement.rule == R17 && IsKeyword(pieces[0], L"IS_FILTER")) range = statement.range;
    }
    const CompositionDescription& description = subject.Description();
    const std::size_t inputs = description.inputs.size() + description.numberedInputs.size();
    diagnostics.Add("C213", range,
                    "a filter has exactly one input, and SOURCES declares " +
                        (inputs == 0 ? "none" : std::to_string(inputs)));
}

}  // namespace

void CheckReadStatus(const Subject& subject, const Headers& headers, const SourceText& source,
                     Diagnostics& diagnostics) {
    switch (subject.Status()) {
        case status::kNoSetup:
            return AddMissing(subject, headers, Section::kSetup, "C201", diagnostics);
        case status::kNoSources:
            return AddMissing(subject, headers, Section::kSources, "C202", diagnostics);
        case status::kNoEffects:
            return AddMissing(subject, headers, Section::kEffects, "C203", diagnostics);
        case status::kNoStructure:
            return AddMissing(subject, headers, Section::kStructure, "C204", diagnostics);
        case status::kNoNameOrCategory:
            return AddMissingTitle(subject, diagnostics);
        case status::kNoOutput:
            return AddNoOutput(subject, diagnostics);
        case status::kUnknownName:
            return AddUnknownName(subject, source, diagnostics);
        case status::kFaultyStatement:
            return AddFaultyStatement(subject, diagnostics);
        case status::kFilterNeedsOneInput:
            return AddWrongInputs(subject, diagnostics);
        default:
            return;
    }
}

}  // namespace tarnexctl
