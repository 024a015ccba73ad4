#pragma once

// Finds what a library depends on as the system's loader would, without loading anything: told
// before the load, the missing file has a name, where the system says no more than a number.

#include <filesystem>
#include <string>
#include <vector>

#include "binary/LibraryImage.h"

namespace tarnexctl {

struct Dependency {
    std::string name;             // as the import names it
    std::string wantedBy;         // the file name of the library that imports it
    std::filesystem::path found;  // empty when it has no file or is missing
    bool missing = false;
    bool delayed = false;  // looked for at the first call only: missing, the load still succeeds
    std::string wrongMachine;     // its machine, when it is not that of the library
    std::string missingFunction;  // the first function that the found file does not export
};

// The dependencies of `library` and those of its dependencies, in the order in which the loader
// comes to them. Files in the system's own folders are not followed further.
std::vector<Dependency> FindDependencies(const std::filesystem::path& library,
                                         const LibraryImage& image);

// Reads a file whole; `problem` says why it could not be.
std::vector<std::byte> ReadWholeFile(const std::filesystem::path& path, std::string& problem);

// Which C++ runtime a library shares ("libstdc++-6.dll"); empty when it imports none.
std::string SharedCppRuntime(const LibraryImage& image);

}  // namespace tarnexctl
