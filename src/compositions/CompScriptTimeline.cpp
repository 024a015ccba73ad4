#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "compositions/CompScriptSections.h"
#include "compositions/HashIndex.h"
#include "compositions/TimelineTargets.h"
#include "compositions/language/Symbols.h"
#include "helpers/report/Report.h"

namespace compositions {
namespace {

std::uint64_t HashOfTarget(const UpperName& instance, std::wstring_view upperProperty) {
    return HashOf(upperProperty, HashOf(instance.View()));
}

// The targets that MAPPING drives, whatever the case in which it writes the property.
class MappedTargets {
public:
    explicit MappedTargets(const Mappings& mappings) : mappings_(mappings) {
        if (mappings.size() <= kFewStatements) return;
        upperProperties_.reserve(mappings.size());
        for (std::size_t i = 0; i < mappings.size(); ++i) {
            upperProperties_.push_back(UpperText(mappings[i].targetProperty));
            const UpperName& instance = mappings[i].instance;
            const WideText& property = upperProperties_[i];
            index_.Insert(HashOfTarget(instance, property), i,
                          [&](std::size_t other) { return IsAt(other, instance, property); });
        }
    }

    bool Contains(const TimelineTarget& target) const {
        if (upperProperties_.empty()) {
            return std::ranges::any_of(mappings_, [&](const Mapping& mapping) {
                return mapping.instance == target.instance &&
                       mapping.targetProperty.size() == target.property.size() &&
                       UpperText(mapping.targetProperty) == target.property;
            });
        }
        return index_.Contains(HashOfTarget(target.instance, target.property), [&](std::size_t i) {
            return IsAt(i, target.instance, target.property);
        });
    }

private:
    bool IsAt(std::size_t i, const UpperName& instance, const WideText& property) const {
        return mappings_[i].instance == instance && upperProperties_[i] == property;
    }

    const Mappings& mappings_;
    std::vector<WideText> upperProperties_;
    HashIndex index_;
};

class TimelineReader {
public:
    TimelineReader(ScriptCursor& cursor, CompositionDescription& description)
        : cursor_(cursor), description_(description) {}

    std::int32_t Read() {
        Pieces& pieces = cursor_.Scratch();
        while (cursor_.Match(R54, pieces)) {
            TargetsOf(pieces, targets_);
            const TextForm form = cursor_.NextForm();
            if (CanBe(form, TextForm::kWord) && cursor_.MatchMore(LxIdent, pieces)) {
                const std::int32_t result = AddEvents(pieces[0]);
                if (result != status::kRead) return result;
            } else if (const auto kind = MatchValue(form, pieces)) {
                AddEntries(pieces[0], *kind);
            } else {
                cursor_.Skipped();
            }
        }
        return status::kRead;
    }

private:
    std::optional<TimelineValueKind> MatchValue(TextForm form, Pieces& pieces) {
        if (CanBe(form, TextForm::kString) && cursor_.MatchMore(R8, pieces)) return kString;
        const bool isNumber = CanBe(form, TextForm::kNumber);
        if (isNumber && cursor_.MatchMore(R5, pieces)) return kNumber;
        if (isNumber && cursor_.MatchMore(R1, pieces)) return kNumber;
        if (CanBe(form, TextForm::kVariable) && cursor_.MatchMore(R20, pieces)) return kVariable;
        return std::nullopt;
    }

    std::int32_t AddEvents(std::wstring_view word) {
        const UpperName envelope(word);
        if (!description_.envelopes.contains(envelope)) {
            return cursor_.Refused(status::kFaultyStatement, word);
        }
        if (!mapped_) mapped_.emplace(description_.mappings);
        for (const TimelineTarget& target : targets_) {
            if (mapped_->Contains(target)) {
                return cursor_.Refused(status::kTargetIsMapped, target.property);
            }
        }
        TimelineEvents& events = description_.timelineEvents;
        if (events.empty()) events.reserve(std::max(targets_.size(), kFewStatements));
        for (TimelineTarget& target : targets_) {
            events.push_back({std::move(target.instance), std::move(target.property), envelope});
        }
        cursor_.Taken();
        return status::kRead;
    }

    void AddEntries(std::wstring_view value, TimelineValueKind kind) {
        TimelineEntries& entries = description_.timelineEntries;
        if (entries.empty()) entries.reserve(std::max(targets_.size(), kFewStatements));
        for (TimelineTarget& target : targets_) {
            entries.push_back(
                {std::move(target.instance), std::move(target.property), WideText(value), kind});
        }
        cursor_.Taken();
    }

    ScriptCursor& cursor_;
    CompositionDescription& description_;
    std::vector<TimelineTarget> targets_;  // of the statement at hand
    std::optional<MappedTargets> mapped_;  // built when an envelope is first used
};

}  // namespace

void TargetsOf(const Pieces& pieces, std::vector<TimelineTarget>& targets) {
    if (pieces.size() % 2 != 0) {
        helpers::ReportAssertion("CompScript", 662,
                                 "compositions::CompositionScript::ReadTimelineSection");
    }
    constexpr std::size_t kFewTargets = 4;  // most statements have no more
    targets.clear();
    targets.reserve(std::max<std::size_t>(pieces.size() / 2, kFewTargets));
    for (std::size_t i = 0; i + 1 < pieces.size(); i += 2) {
        targets.push_back({UpperName(pieces[i]), UpperText(pieces[i + 1])});
    }
}

std::int32_t ReadTimeline(ScriptCursor& cursor, CompositionDescription& description) {
    if (!cursor.FindHeader(Section::kTimeline, R53)) return status::kNoTimeline;
    return TimelineReader(cursor, description).Read();
}

}  // namespace compositions
