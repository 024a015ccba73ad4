#pragma once

// Descriptions to save and load.

#include <cstddef>

#include "compositions/CompositionDescription.h"

namespace samples {

// At least two entries in every container, lower case and odd characters included.
compositions::CompositionDescription Everything();

// Something in every container, as little as possible.
compositions::CompositionDescription Small();

// What docs/archive_format.md decodes.
compositions::CompositionDescription Documented();

// A description with everything in it chosen by the seed: names are distinct or not, texts hold any
// 16-bit unit but lone surrogates.
compositions::CompositionDescription Generated(unsigned seed);

// A tree that is one node wide.
compositions::StructureNode Chain(std::size_t levels);

}  // namespace samples
