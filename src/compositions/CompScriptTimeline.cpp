#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "compositions/CompScriptSections.h"
#include "compositions/HashIndex.h"
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

    bool Contains(const UpperName& instance, const WideText& upperProperty) const {
        if (upperProperties_.empty()) {
            return std::ranges::any_of(mappings_, [&](const Mapping& mapping) {
                return mapping.instance == instance &&
                       mapping.targetProperty.size() == upperProperty.size() &&
                       UpperText(mapping.targetProperty) == upperProperty;
            });
        }
        return index_.Contains(HashOfTarget(instance, upperProperty),
                               [&](std::size_t i) { return IsAt(i, instance, upperProperty); });
    }

private:
    bool IsAt(std::size_t i, const UpperName& instance, const WideText& property) const {
        return mappings_[i].instance == instance && upperProperties_[i] == property;
    }

    const Mappings& mappings_;
    std::vector<WideText> upperProperties_;
    HashIndex index_;
};

// The properties of inner effects that a statement sets: two pieces make one. A single piece at the
// end is reported and left out.
std::size_t CountTargets(const Pieces& pieces) {
    if (pieces.size() % 2 != 0) {
        helpers::ReportAssertion("CompScript", 662,
                                 "compositions::CompositionScript::ReadTimelineSection");
    }
    return pieces.size() / 2;
}

class TimelineReader {
public:
    TimelineReader(ScriptCursor& cursor, CompositionDescription& description)
        : cursor_(cursor), description_(description) {}

    std::int32_t Read() {
        Pieces& value = cursor_.Scratch();
        while (cursor_.Match(R54, pieces_)) {
            targets_ = CountTargets(pieces_);
            const TextForm form = cursor_.NextForm();
            if (CanBe(form, TextForm::kWord) && cursor_.MatchMore(LxIdent, value)) {
                const std::int32_t result = AddEvents(value[0]);
                if (result != status::kRead) return result;
            } else if (const auto kind = MatchValue(form, value)) {
                AddEntries(value[0], *kind);
            } else {
                cursor_.Skipped();
            }
        }
        return status::kRead;
    }

private:
    // Below a kilobyte, memory comes from where it is quickest.
    static constexpr std::size_t kFewEvents = 4;

    std::optional<TimelineValueKind> MatchValue(TextForm form, Pieces& value) {
        if (CanBe(form, TextForm::kString) && cursor_.MatchMore(R8, value)) return kString;
        const bool isNumber = CanBe(form, TextForm::kNumber);
        if (isNumber && cursor_.MatchMore(R5, value)) return kNumber;
        if (isNumber && cursor_.MatchMore(R1, value)) return kNumber;
        if (CanBe(form, TextForm::kVariable) && cursor_.MatchMore(R20, value)) return kVariable;
        return std::nullopt;
    }

    // All of them or, when MAPPING drives one, none.
    std::int32_t AddEvents(std::wstring_view word) {
        const UpperName envelope(word);
        if (!description_.envelopes.contains(envelope)) {
            return cursor_.Refused(status::kFaultyStatement, word);
        }
        if (!mapped_) mapped_.emplace(description_.mappings);
        TimelineEvents& events = description_.timelineEvents;
        const std::size_t before = events.size();
        for (std::size_t i = 0; i < targets_; ++i) {
            TimelineEvent& event = AddTo(events, i, kFewEvents);
            if (mapped_->Contains(event.instance, event.property)) {
                events.resize(before);
                return cursor_.Refused(status::kTargetIsMapped, pieces_[2 * i + 1]);
            }
            event.envelope = envelope;
        }
        cursor_.Taken();
        return status::kRead;
    }

    void AddEntries(std::wstring_view value, TimelineValueKind kind) {
        for (std::size_t i = 0; i < targets_; ++i) {
            TimelineEntry& entry = AddTo(description_.timelineEntries, i, kFewStatements);
            entry.value = value;
            entry.kind = kind;
        }
        cursor_.Taken();
    }

    // A new record at the end for the statement's target of that number. The list begins with room
    // for a few.
    template <class Record>
    Record& AddTo(std::vector<Record>& records, std::size_t target, std::size_t few) {
        if (records.empty()) records.reserve(std::max(targets_, few));
        Record& record = records.emplace_back();
        record.instance.Assign(pieces_[2 * target]);
        AssignUpper(pieces_[2 * target + 1], record.property);
        return record;
    }

    ScriptCursor& cursor_;
    CompositionDescription& description_;
    Pieces pieces_;                        // the targets of the statement at hand
    std::size_t targets_ = 0;              // how many those are
    std::optional<MappedTargets> mapped_;  // built when an envelope is first used
};

}  // namespace

std::int32_t ReadTimeline(ScriptCursor& cursor, CompositionDescription& description) {
    if (!cursor.FindHeader(Section::kTimeline, R53)) return status::kNoTimeline;
    return TimelineReader(cursor, description).Read();
}

}  // namespace compositions
