#pragma once

// What can be said of a plug-in library before it is loaded.

#include <filesystem>
#include <string>
#include <vector>

#include "binary/ImportSearch.h"
#include "binary/LibraryImage.h"
#include "probe/Findings.h"

namespace tarnexctl {

struct Diagnosis {
    LibraryImage image;
    std::vector<Dependency> dependencies;
    std::string runtime;  // the C++ runtime that it shares; empty when none
    std::vector<Finding> findings;
    bool loadable = true;  // whether this system's loader can be expected to take it
};

// `path` is a file that exists.
Diagnosis Diagnose(const std::filesystem::path& path);

}  // namespace tarnexctl
