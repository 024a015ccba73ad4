#include "compositions/ReadStatus.h"

namespace compositions {
namespace {

constexpr const char* kKeywords[kSectionCount] = {
    "SETUP", "SOURCES", "EFFECTS", "STRUCTURE", "PROPERTIES", "MAPPING", "ENVELOPES", "TIMELINE",
};

struct StatusText {
    std::int32_t value;
    const char* text;
};

constexpr StatusText kTexts[] = {
    {status::kNotRead, "not reached"},
    {status::kRead, "read"},
    {status::kNoSetup, "no SETUP section"},
    {status::kNoProperties, "no PROPERTIES section"},
    {status::kNoNameOrCategory, "SETUP ends without a NAME or without a CATEGORY"},
    {status::kNoSources, "no SOURCES section"},
    {status::kNoEffects, "no EFFECTS section"},
    {status::kNoStructure, "no STRUCTURE section"},
    {status::kNoOutput, "STRUCTURE does not open with OUTPUT ="},
    {status::kUnknownName, "STRUCTURE uses a name that nothing declares"},
    {status::kNoMapping, "no MAPPING section"},
    {status::kExpensiveAfterEnveloped, "EXPENSIVE refused behind ENVELOPED"},
    {status::kEnvelopedAfterExpensive, "ENVELOPED refused behind EXPENSIVE"},
    {status::kFaultyStatement, "a statement cannot be understood"},
    {status::kUnknownInstance, "MAPPING targets an effect that EFFECTS does not declare"},
    {status::kDefinedTwice, "defined twice"},
    {status::kNoEnvelopes, "no ENVELOPES section"},
    {status::kUnknownKind, "an envelope key of unknown kind"},
    {status::kNoTimeline, "no TIMELINE section"},
    {status::kTargetIsMapped, "an envelope for a property that MAPPING drives"},
    {status::kFilterNeedsOneInput, "a filter needs exactly one input"},
};

}  // namespace

const char* SectionKeyword(Section section) {
    return kKeywords[static_cast<std::size_t>(section)];
}

const char* ReadStatusText(std::int32_t readStatus) {
    for (const StatusText& entry : kTexts) {
        if (entry.value == readStatus) return entry.text;
    }
    return "unknown status";
}

}  // namespace compositions
