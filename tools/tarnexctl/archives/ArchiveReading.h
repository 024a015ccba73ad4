#pragma once

// An archive's bytes taken apart, with the place where they stop making sense.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compositions/CompositionDescription.h"

namespace tarnexctl {

struct ArchiveDamage {
    std::uint64_t offset = 0;  // the first bad byte; the file's size when it ends too early
    std::string reason;        // "the file ends in the envelopes"
};

// Offsets are the file's.
struct ArchiveReading {
    std::int32_t version = 0;
    compositions::CompositionDescription description;  // incomplete when there is damage
    std::vector<std::uint64_t> fieldOffsets;           // of the body's fields that were reached
    std::uint64_t end = 0;                             // just behind the body
    std::optional<ArchiveDamage> damage;
};

// What the body's 17 fields are called, in their order.
inline constexpr std::array<const char*, 17> kArchiveFields = {
    "inputs",
    "effect instances",
    "mixes",
    "media sources",
    "mappings",
    "properties",
    "envelopes",
    "timeline entries",
    "timeline events",
    "structure",
    "name",
    "category",
    "numbered inputs",
    "registry values",
    "is filter",
    "speed",
    "swap",
};

// A whole archive's; a Failure that names the file and the place of the damage for any other.
ArchiveReading ReadWholeArchive(const std::string& name, std::string_view bytes);

// Never fails: whatever is wrong is in the result.
ArchiveReading ReadArchive(std::string_view bytes);

}  // namespace tarnexctl
