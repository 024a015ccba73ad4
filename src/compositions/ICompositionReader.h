#pragma once

// The read-only description of a composition. References stay valid while the reader lives. Any
// thread once the reader is built: nothing here writes.

#include <cstdint>
#include <string>

#include "compositions/Description.h"
#include "compositions/StructureNode.h"

namespace compositions {

class ICompositionReader {
public:
    /* 0 */ virtual ~ICompositionReader() = default;
    /* 1 */ virtual std::wstring GetName() const = 0;
    /* 2 */ virtual std::wstring GetCategory() const = 0;
    /* 3 */ virtual bool IsFilter() const = 0;
    /* 4 */ virtual std::int32_t GetSpeed() const = 0;
    /* 5 */ virtual bool GetSwap() const = 0;
    // 0 when the description is whole; otherwise it is incomplete and no effect may be built from
    // it.
    /* 6 */ virtual std::int32_t GetReadStatus() const = 0;
    /* 7 */ virtual const Names& GetInputs() const = 0;
    /* 8 */ virtual const MediaSources& GetMediaSources() const = 0;
    /* 9 */ virtual const EffectInstances& GetEffectInstances() const = 0;
    /* 10 */ virtual const Mappings& GetMappings() const = 0;
    /* 11 */ virtual const Properties& GetProperties() const = 0;
    /* 12 */ virtual const Envelopes& GetEnvelopes() const = 0;
    /* 13 */ virtual const TimelineEntries& GetTimelineEntries() const = 0;
    /* 14 */ virtual const TimelineEvents& GetTimelineEvents() const = 0;
    /* 15 */ virtual const StructureNode& GetStructure() const = 0;
    /* 16 */ virtual const NumberedInputs& GetNumberedInputs() const = 0;
    /* 17 */ virtual const Names& GetMixes() const = 0;
    /* 18 */ virtual const RegistryValues& GetRegistryValues() const = 0;
};

}  // namespace compositions
