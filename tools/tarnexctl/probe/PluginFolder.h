#pragma once

// Which plug-in libraries a command works on.

#include <filesystem>
#include <string>
#include <vector>

namespace tarnexctl {

struct PluginFile {
    std::filesystem::path path;
    std::string name;    // the file's name
    bool asked = false;  // named by the user, not met in a folder
};

// Every library of the system's kind in the folder, by name. A Failure when there is no such
// folder.
std::vector<PluginFile> PluginsInFolder(const std::string& folder);

// Those of the given names, in their order; a Failure when one does not exist.
std::vector<PluginFile> PluginsByName(const std::string& folder,
                                      const std::vector<std::string>& names);

// Files, or folders that stand for the libraries in them. A Failure when one does not exist.
std::vector<PluginFile> PluginsByPath(const std::vector<std::string>& paths);

}  // namespace tarnexctl
