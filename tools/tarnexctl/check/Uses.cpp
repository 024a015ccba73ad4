#include "check/Uses.h"

#include <algorithm>
#include <string>
#include <vector>

#include "check/KeyTimes.h"
#include "compositions/language/Symbols.h"

namespace tarnexctl {
namespace {

using namespace compositions;
using Views = std::vector<std::wstring_view>;

// Distinct names that SOURCES and EFFECTS left in the description.
std::size_t DistinctNames(const CompositionDescription& description, std::size_t declaredMixes) {
    Views names;
    const auto addKeys = [&](const auto& map) {
        for (const auto& [name, value] : map) names.push_back(name.View());
    };
    for (const UpperName& name : description.inputs) names.push_back(name.View());
    for (std::size_t i = 0; i < declaredMixes; ++i) names.push_back(description.mixes[i].View());
    addKeys(description.numberedInputs);
    addKeys(description.mediaSources);
    addKeys(description.effectInstances);
    std::sort(names.begin(), names.end());
    return static_cast<std::size_t>(std::unique(names.begin(), names.end()) - names.begin());
}

void AddRedeclarations(const Subject& subject, Diagnostics& diagnostics) {
    std::map<UpperName, const RecordedStatement*> first;
    for (const Section section : {Section::kSources, Section::kEffects}) {
        for (const RecordedStatement& statement : subject.Record().Statements(section)) {
            const std::wstring_view name = subject.Record().Pieces(statement)[0];
            const auto [known, isNew] = first.try_emplace(UpperName(name), &statement);
            if (isNew) continue;
            const bool replaces = known->second->rule == statement.rule;
            diagnostics.Add("C508", subject.RangeOf(statement, name),
                            Quoted(name) + " is declared already",
                            {replaces && statement.rule != R33
                                 ? "the later declaration replaces the earlier one"
                                 : "STRUCTURE can name only one of them"});
        }
    }
}

}  // namespace

void CheckRedeclarations(const Subject& subject, Diagnostics& diagnostics) {
    std::size_t declared = subject.Record().Statements(Section::kSources).size();
    std::size_t mixes = 0;
    for (const auto& statement : subject.Record().Statements(Section::kEffects)) {
        const auto pieces = subject.Record().Pieces(statement);
        ++declared;
        mixes += IsKeyword(pieces[1], L"MIX") ? 1 : 0;
    }
    if (DistinctNames(subject.Description(), mixes) != declared) {
        AddRedeclarations(subject, diagnostics);
    }
}

void CheckPropertyUses(const Subject& subject, Diagnostics& diagnostics) {
    const CompositionDescription& description = subject.Description();
    if (description.mappings.empty() || !subject.IsWhole(Section::kProperties)) return;
    std::vector<UpperName> properties;
    properties.reserve(description.properties.size());
    for (const PropertyRecord& record : description.properties)
        properties.emplace_back(record.name);
    std::sort(properties.begin(), properties.end());
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kMapping)) {
        const std::wstring_view name =
            subject.Record().Pieces(statement)[subject.FirstQuoted(statement)];
        if (std::binary_search(properties.begin(), properties.end(), UpperName(name))) continue;
        Views names;
        if (diagnostics.HasRoom()) {
            for (const PropertyRecord& record : description.properties)
                names.push_back(record.name);
        }
        diagnostics.Add("C510", subject.RangeOf(statement, name),
                        "PROPERTIES has no " + Quoted(name) + " to map", DidYouMean(name, names));
    }
}

void CheckEnvelopeUses(const Subject& subject, Diagnostics& diagnostics) {
    const CompositionDescription& description = subject.Description();
    if (description.envelopes.empty()) return;
    Views used;
    for (const TimelineEvent& event : description.timelineEvents) {
        used.push_back(event.envelope.View());
    }
    std::sort(used.begin(), used.end());
    const bool isTimelineKnown = subject.IsWhole(Section::kTimeline);
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kEnvelopes)) {
        if (statement.outcome != StatementOutcome::kTaken) continue;
        const std::wstring_view name = subject.Record().Pieces(statement)[0];
        const auto envelope = description.envelopes.find(UpperName(name));
        if (envelope == description.envelopes.end()) continue;
        if (isTimelineKnown &&
            !std::binary_search(used.begin(), used.end(), envelope->first.View())) {
            diagnostics.Add("C511", subject.RangeOf(statement, name),
                            "the envelope " + Quoted(name) + " is never used");
        }
        CheckKeyTimes(subject, statement, envelope->second, diagnostics);
    }
}

}  // namespace tarnexctl
