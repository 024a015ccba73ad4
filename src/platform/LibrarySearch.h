#pragma once

// Where the system's loader looks for libraries, and why it did not load one. Texts are UTF-8.

#include <string>
#include <vector>

namespace platform {

// Why the last LoadModule of this thread failed, in the system's words. Call it right after.
std::string LastModuleError();

// The folders that the loader searches for what a library depends on, in order, when the library
// itself was given by its full path: behind the library's own folder, which comes first.
std::vector<std::string> LibrarySearchFolders();

// ".dll", ".so".
const char* LibraryExtension();

// Whether a library of that file name is in this process already, which satisfies a dependency
// without any search.
bool IsLibraryLoaded(const std::string& fileName);

// Whether the loader provides a library of that name itself, without a file.
bool IsLibraryVirtual(const std::string& fileName);

}  // namespace platform
