#pragma once

#include <string>

namespace platform {

// The form of `path` that the system takes at any length: a long one is made absolute and gets the
// prefix that lifts the limit. A short one comes back as it is.
std::wstring LongPath(const std::wstring& path);

}  // namespace platform
