#pragma once

// Opening what the user named, with the exit code and the message that fit each way it can fail.

#include <filesystem>
#include <fstream>
#include <string>

namespace tarnexctl {

// The path of a file that exists; a Failure when it does not (not found) or is a folder (input or
// output).
std::filesystem::path ExistingFile(const std::string& name);

// The same for a folder.
std::filesystem::path ExistingFolder(const std::string& name);

// The file opened for reading bytes; a Failure (input or output) when the system refuses.
std::ifstream OpenInput(const std::filesystem::path& path, const std::string& name);

}  // namespace tarnexctl
