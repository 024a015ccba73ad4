#pragma once

// A description as JSON. docs/description.schema.json says what each key holds.

#include <string_view>

#include "description/LoadedDescription.h"
#include "frame/Json.h"

namespace tarnexctl {

// Everything that is known of it. Nothing is lost: names that may occur twice, or be anything,
// are values and never keys, and the structure is a flat list, however deep it is.
Json DescriptionDocument(const LoadedDescription& loaded);

// Its key "envelopes" alone.
Json EnvelopesDocument(const compositions::Envelopes& envelopes);

// A text as a JSON string; one that is no Unicode text, since it holds half a surrogate pair, as
// {"utf16": [units]}.
Json TextDocument(std::wstring_view text);

}  // namespace tarnexctl
