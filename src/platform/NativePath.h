#pragma once

// Paths as the system's calls take them. In wide texts a backslash separates folders on every
// system, and a slash does, too.

#include <filesystem>
#include <string>

namespace platform {

using NativeString = std::filesystem::path::string_type;

// Of any length: where the system limits it, a long path is made absolute and gets the prefix that
// lifts the limit.
NativeString NativePath(const std::wstring& path);

std::wstring WidePath(const NativeString& path);

}  // namespace platform
