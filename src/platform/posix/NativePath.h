#pragma once

#include <string>

namespace platform {

// `path` in the system's bytes, its backslashes turned into slashes.
std::string NativePath(const std::wstring& path);

}  // namespace platform
