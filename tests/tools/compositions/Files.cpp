#include "compositions/Files.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "compositions/ArchiveBody.h"
#include "compositions/CompScript.h"
#include "frame/Text.h"

namespace tooltest {

namespace fs = std::filesystem;
using tarnexctl::FromPath;

std::string ReadFile(const std::string& path) {
    std::ifstream file(tarnexctl::ToPath(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string PathOf(const ScratchFolder& folder) {
    return FromPath(folder.Path());
}

std::vector<std::string> NamesIn(const ScratchFolder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.Path())) {
        names.push_back(FromPath(entry.path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

compositions::CompositionDescription ReadDescription(const std::string& script) {
    return compositions::CompositionScript(std::string_view(script)).GetDescription();
}

std::string ArchiveBytesOf(const compositions::CompositionDescription& description) {
    std::string bytes("ScriptArchive\0\2\0\0\0", 18);
    compositions::SaveArchiveBody(description, bytes);
    return bytes;
}

std::string WriteArchiveOf(const ScratchFolder& folder, const std::string& name,
                           const compositions::CompositionDescription& description) {
    return folder.Write(name, ArchiveBytesOf(description));
}

std::vector<std::string> ExampleScripts() {
    std::vector<std::string> paths;
    for (const auto& entry : fs::directory_iterator(TARNEX_EXAMPLES "/compositions")) {
        paths.push_back(FromPath(entry.path()));
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace tooltest
