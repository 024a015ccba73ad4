#pragma once

#include <functional>
#include <string>

namespace compositions {

// Puts a new file at `path`, in the place of an old one if there is one. `write` is given the path
// of a temporary file in the same folder, writes it and says whether that went well; the temporary
// file then takes the old one's place in one step: whatever happens, the old file is there or the
// new one, whole. Where somebody holds the old one it is tried for a fifth of a second. False when
// it could not be written: the old file stays and the temporary file is removed. Also removes
// temporary files that processes left in the folder when they were killed. What `write` throws
// passes on, the temporary file removed; throws std::bad_alloc. Any thread; one write at a time.
bool ReplaceFile(const std::wstring& path,
                 const std::function<bool(const std::wstring& temporary)>& write);

}  // namespace compositions
