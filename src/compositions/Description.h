#pragma once

// The records of a composition's description: what a script says, kept as it was read. Names that
// serve as keys are UpperNames; numbers stay the text that the script wrote.

#include <compare>
#include <cstdint>
#include <map>
#include <vector>

#include "compositions/UpperName.h"
#include "compositions/WideText.h"

namespace compositions {

enum MediaKind : std::uint32_t { kBitmap = 0, kMovie = 1 };

struct MediaItem {
    bool isRegistryValue = false;  // the text names a registry value
    WideText text;

    bool operator==(const MediaItem&) const = default;
};

struct MediaSource {
    std::uint32_t kind = kBitmap;  // MediaKind
    std::vector<MediaItem> items;

    bool operator==(const MediaSource&) const = default;
};

// A composition property that drives a property of an inner effect.
struct Mapping {
    UpperName property;
    std::uint32_t access = 0;
    UpperName instance;
    WideText targetProperty;

    // The access flags take no part.
    bool operator==(const Mapping& other) const {
        return property == other.property && instance == other.instance &&
               targetProperty == other.targetProperty;
    }
};

struct PropertyRecord {
    std::uint32_t access = 0;
    WideText name;
    WideText value;  // unparsed; a quoted text keeps its quotes

    bool operator==(const PropertyRecord&) const = default;
};

struct EnvelopeKey {
    NumberText time;
    NumberText value;
    UpperName kind;
    NumberText firstParameter;
    NumberText secondParameter;

    bool operator==(const EnvelopeKey&) const = default;
};

struct Envelope {
    NumberText count;  // the number in braces behind the name, as written
    std::vector<EnvelopeKey> keys;

    bool operator==(const Envelope&) const = default;
};

enum TimelineValueKind : std::uint32_t { kNumber = 0, kString = 1, kVariable = 2 };

struct TimelineEntry {
    UpperName instance;
    WideText property;  // upper case
    WideText value;
    std::uint32_t kind = kNumber;  // TimelineValueKind

    bool operator==(const TimelineEntry&) const = default;
};

struct TimelineEvent {
    UpperName instance;
    WideText property;  // upper case
    UpperName envelope;

    bool operator==(const TimelineEvent&) const = default;
};

struct RegistryValue {
    WideText first;
    WideText second;
    WideText third;  // empty when not written

    bool operator==(const RegistryValue&) const = default;
};

using Names = std::vector<UpperName>;
using EffectInstances = std::map<UpperName, WideText>;
using MediaSources = std::map<UpperName, MediaSource>;
using Mappings = std::vector<Mapping>;
using Properties = std::vector<PropertyRecord>;
using Envelopes = std::map<UpperName, Envelope>;
using TimelineEntries = std::vector<TimelineEntry>;
using TimelineEvents = std::vector<TimelineEvent>;
using NumberedInputs = std::map<UpperName, std::int32_t>;
using RegistryValues = std::map<UpperName, RegistryValue>;

}  // namespace compositions
