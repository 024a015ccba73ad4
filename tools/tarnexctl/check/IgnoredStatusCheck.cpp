#include <algorithm>
#include <set>
#include <string>

#include "check/Refusals.h"
#include "compositions/UpperName.h"
#include "compositions/language/ScriptCharacters.h"
#include "compositions/language/Symbols.h"

namespace tarnexctl {
namespace {

using namespace compositions;

constexpr std::size_t kFirstKey = 2;  // behind an envelope's name and count
constexpr std::wstring_view kKeyKinds[] = {L"LINEAR", L"COSINE", L"CUBIC", L"HERMITE", L"HOLD"};

class IgnoredStatuses {
public:
    IgnoredStatuses(const Subject& subject, const Headers& headers, const SourceText& source,
                    Diagnostics& diagnostics)
        : subject_(subject), headers_(headers), source_(source), diagnostics_(diagnostics) {}

    void Check(Section section) {
        const auto statements = subject_.Record().Statements(section);
        if (statements.empty() || statements.back().outcome != StatementOutcome::kRefused) return;
        const RecordedStatement& refused = statements.back();
        const RecordedSection& record = subject_.Record().Of(section);
        switch (record.status) {
            case status::kExpensiveAfterEnveloped:
                return Say("C401", refused, FirstPiece(refused, record.culprit),
                           "a property cannot be EXPENSIVE behind ENVELOPED", {});
            case status::kEnvelopedAfterExpensive:
                return Say("C402", refused, FirstPiece(refused, record.culprit),
                           "a property cannot be ENVELOPED behind EXPENSIVE", {});
            case status::kUnknownInstance:
                return Say("C403", refused, RefusedTarget(refused),
                           "EFFECTS declares no " + Quoted(record.culprit),
                           DidYouMean(record.culprit, subject_.NamesOf(Section::kEffects)));
            case status::kDefinedTwice:
                return section == Section::kMapping
                           ? Say("C404", refused, RefusedTarget(refused),
                                 "the property drives this target already", {})
                           : Say("C405", refused, FirstPiece(refused, record.culprit),
                                 "the envelope " + Quoted(record.culprit) + " is there already",
                                 FirstEnvelope(record.culprit));
            case status::kUnknownKind:
                return Say(
                    "C406", refused, FirstPiece(refused, record.culprit, kFirstKey),
                    "there is no kind " + Quoted(record.culprit),
                    DidYouMean(record.culprit, {std::begin(kKeyKinds), std::end(kKeyKinds)}));
            case status::kFaultyStatement:
                return SayNoEnvelope(refused, record.culprit);
            case status::kTargetIsMapped:
                return SayMapped(refused, record.culprit);
            default:
                return;
        }
    }

private:
    void Say(const char* code, const RecordedStatement& refused, std::wstring_view piece,
             const std::string& message, std::vector<std::string> help) {
        if (std::string_view(code) == "C403" || std::string_view(code) == "C404") {
            help.push_back("dropped: this target, those in front of it and all statements behind");
        } else {
            const std::vector<std::string> notRead = headers_.NotRead(refused.range.begin);
            help.insert(help.end(), notRead.begin(), notRead.end());
        }
        diagnostics_.Add(code, subject_.RangeOf(refused, piece), message, help);
    }

    void SayNoEnvelope(const RecordedStatement& refused, const std::wstring& word) {
        std::vector<std::string> help = DidYouMean(word, subject_.NamesOf(Section::kEnvelopes));
        if (!subject_.IsWhole(Section::kEnvelopes)) {
            help.push_back(
                "ENVELOPES ends early, at line " +
                std::to_string(source_.LineOf(subject_.Record().Of(Section::kEnvelopes).end)));
        }
        const std::wstring_view piece = subject_.Record().Pieces(refused).back();
        const std::size_t at = subject_.PositionOf(subject_.RangeOf(refused, piece).begin);
        const std::size_t last = subject_.Text().find_last_not_of(characters::kBlanks, at - 1);
        if (subject_.Text().substr(last, at - last).find(L'\n') != std::wstring_view::npos) {
            help = {"the value is missing: this word stands on another line"};
        }
        if (help.empty()) {
            help.push_back("a value is a number, a text in quotes, a variable or an envelope");
        }
        Say("C407", refused, subject_.Record().Pieces(refused).back(),
            "there is no envelope " + Quoted(word), help);
    }

    void SayMapped(const RecordedStatement& refused, std::wstring_view property) {
        const WideText upperProperty = UpperText(property);
        std::set<UpperName> mapped;  // instances, for that property
        for (const Mapping& mapping : subject_.Description().mappings) {
            if (UpperText(mapping.targetProperty) == upperProperty) mapped.insert(mapping.instance);
        }
        const auto pieces = subject_.Record().Pieces(refused);
        std::wstring_view target;
        for (std::size_t i = 0; i + 2 < pieces.size() && target.empty(); i += 2) {
            if (UpperText(pieces[i + 1]) == upperProperty &&
                mapped.contains(UpperName(pieces[i]))) {
                target = pieces[i];
            }
        }
        Say("C408", refused, target, "MAPPING drives this property, so no envelope can", {});
    }

    std::wstring_view FirstPiece(const RecordedStatement& statement, std::wstring_view text,
                                 std::size_t from = 0) const {
        const auto pieces = subject_.Record().Pieces(statement).subspan(from);
        const auto found = std::find(pieces.begin(), pieces.end(), text);
        return found == pieces.end() ? std::wstring_view() : *found;
    }

    std::size_t TargetsOf(const RecordedStatement& mapping) const {
        return (mapping.pieceCount - subject_.FirstQuoted(mapping) - 1) / 2;
    }

    // A mapping statement's targets are taken from the last to the first: those behind the refused
    // one are among the mappings.
    std::wstring_view RefusedTarget(const RecordedStatement& refused) const {
        std::size_t taken = subject_.Description().mappings.size();
        for (const auto& statement : subject_.Record().Statements(Section::kMapping)) {
            if (statement.outcome == StatementOutcome::kTaken) taken -= TargetsOf(statement);
        }
        const auto pieces = subject_.Record().Pieces(refused);
        return pieces[pieces.size() - 2 * (taken + 1)];
    }

    std::vector<std::string> FirstEnvelope(std::wstring_view name) const {
        for (const auto& statement : subject_.Record().Statements(Section::kEnvelopes)) {
            if (UpperName(subject_.Record().Pieces(statement)[0]) == UpperName(name)) {
                return {"the one of line " + std::to_string(source_.LineOf(statement.range.begin)) +
                        " stays"};
            }
        }
        return {};
    }

    const Subject& subject_;
    const Headers& headers_;
    const SourceText& source_;
    Diagnostics& diagnostics_;
};

}  // namespace

void CheckIgnoredStatuses(const Subject& subject, const Headers& headers, const SourceText& source,
                          Diagnostics& diagnostics) {
    IgnoredStatuses check(subject, headers, source, diagnostics);
    for (const Section section :
         {Section::kProperties, Section::kMapping, Section::kEnvelopes, Section::kTimeline}) {
        check.Check(section);
    }
}

}  // namespace tarnexctl
