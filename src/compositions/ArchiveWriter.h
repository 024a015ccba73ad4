#pragma once

#include <string>

#include "compositions/CompositionDescription.h"

namespace compositions {

// Writes the description's archive to `path` by ReplaceFile, and keeps its promises. False when it
// could not be written. Throws nothing.
bool WriteArchive(const std::wstring& path, const CompositionDescription& description);

}  // namespace compositions
