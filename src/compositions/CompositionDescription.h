#pragma once

// The whole description of a composition as plain data, in its published field order: what a script
// is read into and what an archive saves and loads.

#include <cstdint>

#include "compositions/Description.h"
#include "compositions/StructureNode.h"
#include "compositions/WideText.h"

namespace compositions {

struct CompositionDescription {
    Names inputs;                     // in script order, duplicates kept
    EffectInstances effectInstances;  // instance name to the effect's registered name
    Names mixes;                      // declared ones, then those that STRUCTURE made
    MediaSources mediaSources;
    Mappings mappings;
    Properties properties;
    Envelopes envelopes;
    TimelineEntries timelineEntries;
    TimelineEvents timelineEvents;
    StructureNode structure;
    WideText name;
    WideText category;
    NumberedInputs numberedInputs;
    RegistryValues registryValues;
    bool isFilter = false;
    std::int32_t speed = 0;
    bool swap = false;

    bool operator==(const CompositionDescription&) const = default;
};

}  // namespace compositions
