#pragma once

#include <vector>

#include "compositions/ScriptCursor.h"
#include "compositions/UpperName.h"
#include "compositions/WideText.h"

namespace compositions {

// A property of an inner effect that a TIMELINE statement sets.
struct TimelineTarget {
    UpperName instance;
    WideText property;  // upper case
};

// Replaces the targets by those of the pieces: two make a target, a single one at the end is
// reported and left out.
void TargetsOf(const Pieces& pieces, std::vector<TimelineTarget>& targets);

}  // namespace compositions
