#include "PluginList.h"

#include <algorithm>
#include <vector>

#include "System.h"
#include "Text.h"

namespace host {

std::wstring PluginList(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> names;
    std::error_code missing;  // a folder that is not there holds no plug-ins
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
        if (entry.path().extension() == kPluginSuffix) {
            names.push_back(entry.path().filename());
        }
    }
    std::sort(names.begin(), names.end());
    std::wstring list;
    for (const auto& name : names) {
        list += Wide(name) + L"|";
    }
    return list;
}

}  // namespace host
