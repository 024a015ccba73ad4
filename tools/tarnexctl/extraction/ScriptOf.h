#pragma once

// A description turned back into a script.

#include <string>

#include "compositions/CompositionDescription.h"
#include "extraction/SectionText.h"

namespace tarnexctl {

struct ExtractedScript {
    std::string bytes;
    // What the script does not say. Without any, the library reads it to the very description.
    Gaps gaps;
};

// Every description that a script can give has a script without gaps, unless texts of two sections
// hold each other's headers.
ExtractedScript ScriptOf(const compositions::CompositionDescription& description);

}  // namespace tarnexctl
