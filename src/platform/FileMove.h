#pragma once

// Replacing a file in one step: what it takes to write a file beside the old one and move it over.
// Paths may be of any length; a backslash separates folders on every system.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace platform {

// `path` in the form that the standard library's file streams open.
std::filesystem::path StreamPath(const std::wstring& path);

// Whether there is a file of that name that is neither a folder nor a device.
bool IsPlainFile(const std::wstring& path);

// Whether both are there and are one file, by whatever names.
bool IsSameFile(const std::wstring& path, const std::wstring& other);

// kRefused: somebody holds one of the files; it may go well a moment later.
enum class MoveResult { kDone, kRefused, kFailed };

// Puts what was written to `from` on the disk and gives it the name `to`, in one step for everybody
// who opens that: they see the old file or the new one. Both stay as they were on failure. A file
// that may not be written is not replaced.
MoveResult MoveFileOver(const std::wstring& from, const std::wstring& to);

// False when the file is still there.
bool RemoveFile(const std::wstring& path);

// Names of the entries of `folder` that begin with `prefix`, in no particular order. `folder` ends
// with a separator; empty is the current one.
std::vector<std::wstring> ListFolder(const std::wstring& folder, const std::wstring& prefix);

// The process of that number, as CurrentProcessId gives it.
bool IsProcessAlive(std::uint32_t id);

}  // namespace platform
