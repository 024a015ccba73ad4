#pragma once

// The library's descriptions as the plain implementation of archives has them, so that what the one
// read and wrote can be compared with the other.

#include "compositions/CompositionDescription.h"
#include "compositions/archive/PlainArchive.h"

namespace plain {

// Every value of the description, the mappings' flags included, which its own comparison leaves
// out.
Description Of(const compositions::CompositionDescription& description);

inline File Write(const compositions::CompositionDescription& description,
                  std::int32_t version = 2) {
    return Write(Of(description), version);
}

}  // namespace plain
