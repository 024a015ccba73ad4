#pragma once

#include <string>

#include "compositions/CompositionDescription.h"

namespace compositions {

// Writes the description's archive to `path`. It is written to a temporary file in the same folder,
// which takes the old one's place in one step: whatever happens, the old archive is there or the
// new one, whole. Where somebody holds the old one it is tried for a fifth of a second. False when
// it could not be written: the old archive stays and the temporary file is removed. Also removes
// temporary files that processes left in the folder when they were killed. Any thread; one write
// at a time.
bool WriteArchive(const std::wstring& path, const CompositionDescription& description);

}  // namespace compositions
