#pragma once

// Scripts and archives for the commands that look at compositions.

#include <string>
#include <vector>

#include "Tool.h"
#include "compositions/CompositionDescription.h"

namespace tooltest {

std::string ReadFile(const std::string& path);

// The folder, and what is in it, sorted.
std::string PathOf(const ScratchFolder& folder);
std::vector<std::string> NamesIn(const ScratchFolder& folder);

// What the library reads of a script's bytes, whatever its status.
compositions::CompositionDescription ReadDescription(const std::string& script);

// A description's archive, whole, and that as a file.
std::string ArchiveBytesOf(const compositions::CompositionDescription& description);
std::string WriteArchiveOf(const ScratchFolder& folder, const std::string& name,
                           const compositions::CompositionDescription& description);

// Every script of the examples that reads, by path.
std::vector<std::string> ExampleScripts();

}  // namespace tooltest
