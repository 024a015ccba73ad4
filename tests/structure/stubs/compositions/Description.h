#pragma once

// The records of a description by name alone: the reader's table holds references to them.

namespace compositions {
class Names;
class EffectInstances;
class MediaSources;
class Mappings;
class Properties;
class Envelopes;
class TimelineEntries;
class TimelineEvents;
class NumberedInputs;
class RegistryValues;
}  // namespace compositions
