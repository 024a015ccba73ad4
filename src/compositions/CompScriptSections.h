#pragma once

// The section readers. Each searches its header from the start of the script, takes statements
// until none matches, fills its containers and returns its own status; what it took before a
// failure stays.

#include <cstddef>
#include <cstdint>

#include "compositions/CompositionDescription.h"
#include "compositions/ScriptCursor.h"

namespace compositions {

// Lists are searched without an index up to as many elements, and start with room for them: most
// scripts need no more.
inline constexpr std::size_t kFewStatements = 8;

std::int32_t ReadSetup(ScriptCursor& cursor, CompositionDescription& description);
std::int32_t ReadSources(ScriptCursor& cursor, CompositionDescription& description);
std::int32_t ReadEffects(ScriptCursor& cursor, CompositionDescription& description);
std::int32_t ReadStructure(ScriptCursor& cursor, CompositionDescription& description);
std::int32_t ReadProperties(ScriptCursor& cursor, CompositionDescription& description);
std::int32_t ReadMapping(ScriptCursor& cursor, CompositionDescription& description);
std::int32_t ReadEnvelopes(ScriptCursor& cursor, CompositionDescription& description);
std::int32_t ReadTimeline(ScriptCursor& cursor, CompositionDescription& description);

// The number at the start of the text: blanks, a sign and digits, up to the limits of 32 bits; 0
// when there is none.
std::int32_t NumberOf(std::wstring_view text);

}  // namespace compositions
