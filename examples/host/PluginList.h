#pragma once

#include <filesystem>
#include <string>

namespace host {

// The plug-in libraries of a folder, by name, each followed by "|": what the manager takes.
std::wstring PluginList(const std::filesystem::path& folder);

}  // namespace host
