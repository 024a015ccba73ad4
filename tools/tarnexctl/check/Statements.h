#pragma once

// Statements that were read otherwise than they look: single ones, each by itself.

#include "check/Diagnostics.h"
#include "check/Subject.h"

namespace tarnexctl {

void CheckSetupStatements(const Subject& subject, Diagnostics& diagnostics);
void CheckSourceStatements(const Subject& subject, Diagnostics& diagnostics);
// Access words, in PROPERTIES and MAPPING.
void CheckAccessWords(const Subject& subject, Diagnostics& diagnostics);
void CheckEnvelopeStatements(const Subject& subject, Diagnostics& diagnostics);
void CheckTimelineStatements(const Subject& subject, Diagnostics& diagnostics);
// Text that a target's full stop passes over, in MAPPING and TIMELINE.
void CheckTargets(const Subject& subject, Diagnostics& diagnostics);
// Numbers that hold more than they should, where they are kept as they are written.
void CheckNumbers(const Subject& subject, Diagnostics& diagnostics);
// Blanks at the start of texts, in every section.
void CheckLostBlanks(const Subject& subject, Diagnostics& diagnostics);

}  // namespace tarnexctl
