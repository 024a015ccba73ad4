#pragma once

// The statuses that reading leaves: those that refuse the script, and those of the sections that
// stop nothing but themselves.

#include "check/Diagnostics.h"
#include "check/Headers.h"
#include "check/Subject.h"

namespace tarnexctl {

// The script's read status, when it is not 0.
void CheckReadStatus(const Subject& subject, const Headers& headers, const SourceText& source,
                     Diagnostics& diagnostics);

// PROPERTIES, MAPPING, ENVELOPES and TIMELINE.
void CheckIgnoredStatuses(const Subject& subject, const Headers& headers, const SourceText& source,
                          Diagnostics& diagnostics);

}  // namespace tarnexctl
