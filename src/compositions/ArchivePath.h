#pragma once

// Where a script's archive lies. Any thread.

#include <optional>
#include <string>
#include <string_view>

namespace compositions {

// The pieces of a path; put together they are the path again.
struct PathPieces {
    std::wstring_view drive;      // a letter and a colon, or empty
    std::wstring_view folder;     // with the separator at its end, or empty
    std::wstring_view name;       // without the extension
    std::wstring_view extension;  // from the last dot behind the folder, or empty
};

// Either separator ends a folder. Views into `path`.
PathPieces SplitPath(std::wstring_view path);

// The path with the extension ".mxf" in place of its own. The path ends at its first zero. Nothing
// when it has more than 259 characters, before or after, its folder or its extension more than 255,
// or its name with the new extension more than 259.
std::optional<std::wstring> ArchivePathOf(std::wstring_view path);

}  // namespace compositions
