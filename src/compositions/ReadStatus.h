#pragma once

// The sections of a composition script and the statuses that reading them leaves. The numbers are
// the reader's own and are published: hosts and tools know them.

#include <array>
#include <cstddef>
#include <cstdint>

namespace compositions {

// In the order in which they are read.
enum class Section : std::uint8_t {
    kSetup,
    kSources,
    kEffects,
    kStructure,
    kProperties,
    kMapping,
    kEnvelopes,
    kTimeline,
};
inline constexpr std::size_t kSectionCount = 8;

// The keyword that stands in the section's header, for example "SETUP".
const char* SectionKeyword(Section section);

namespace status {
// The section was never reached, because an earlier one failed, or there was no script to read.
inline constexpr std::int32_t kNotRead = -1;
inline constexpr std::int32_t kRead = 0;
inline constexpr std::int32_t kNoSetup = 1;
inline constexpr std::int32_t kNoProperties = 2;
inline constexpr std::int32_t kNoNameOrCategory = 3;
inline constexpr std::int32_t kNoSources = 4;
inline constexpr std::int32_t kNoEffects = 5;
inline constexpr std::int32_t kNoStructure = 6;
inline constexpr std::int32_t kNoOutput = 7;
inline constexpr std::int32_t kUnknownName = 8;
inline constexpr std::int32_t kNoMapping = 9;
inline constexpr std::int32_t kExpensiveAfterEnveloped = 10;
inline constexpr std::int32_t kEnvelopedAfterExpensive = 11;
// SETUP: an IS_FILTER value; STRUCTURE: parentheses; TIMELINE: an unknown envelope.
inline constexpr std::int32_t kFaultyStatement = 12;
inline constexpr std::int32_t kUnknownInstance = 13;
// MAPPING: an equal mapping; ENVELOPES: an envelope of the same name.
inline constexpr std::int32_t kDefinedTwice = 14;
inline constexpr std::int32_t kNoEnvelopes = 15;
inline constexpr std::int32_t kUnknownKind = 17;
inline constexpr std::int32_t kNoTimeline = 18;
inline constexpr std::int32_t kTargetIsMapped = 19;
inline constexpr std::int32_t kFilterNeedsOneInput = 20;
}  // namespace status

// The status in plain English, for example "no SETUP section"; "unknown status" for other numbers.
const char* ReadStatusText(std::int32_t readStatus);

// What became of each section, the optional ones included, whose statuses stop nothing.
class SectionStatuses {
public:
    SectionStatuses() { values_.fill(status::kNotRead); }

    std::int32_t& operator[](Section section) { return values_[static_cast<std::size_t>(section)]; }
    std::int32_t operator[](Section section) const {
        return values_[static_cast<std::size_t>(section)];
    }
    bool operator==(const SectionStatuses&) const = default;

private:
    std::array<std::int32_t, kSectionCount> values_;
};

}  // namespace compositions
