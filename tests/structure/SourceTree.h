#pragma once

// The project's own files, as the structural tests read them.

#include <filesystem>
#include <string>
#include <vector>

namespace structure {

std::filesystem::path SourceRoot();

// Paths below the root, with forward slashes, of the files in `folder` (all the way down) that end
// in one of `extensions`, or of all when there are none; sorted. An absent folder has none.
std::vector<std::string> FilesBelow(const std::string& folder,
                                    const std::vector<std::string>& extensions);

// Names of the files at the root itself.
std::vector<std::string> TopLevelFiles();

// The file's lines; a missing file is a failure of the running test.
std::vector<std::string> LinesOf(const std::string& path);

// What the file includes between quotes.
std::vector<std::string> QuotedIncludes(const std::string& path);

}  // namespace structure
