#pragma once

// Sections that end before the next header: where, at what, and why.

#include <vector>

#include "check/Comments.h"
#include "check/Diagnostics.h"
#include "check/Headers.h"
#include "check/Subject.h"

namespace tarnexctl {

// The subject was read with the expected rules. Troubles that turn out to be the cause of an end
// are told there and taken from the list.
void CheckSectionEnds(const Subject& subject, const Headers& headers,
                      std::vector<CommentTrouble>& troubles, Diagnostics& diagnostics);

}  // namespace tarnexctl
