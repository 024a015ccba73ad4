#include "probe/PluginFolder.h"

#include <algorithm>

#include "frame/ExitCode.h"
#include "frame/InputFile.h"
#include "frame/Text.h"
#include "platform/LibrarySearch.h"

namespace tarnexctl {
namespace {

namespace fs = std::filesystem;

bool IsLibraryName(const fs::path& path) {
    std::string extension = FromPath(path.extension());
    for (char& c : extension) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return extension == platform::LibraryExtension();
}

}  // namespace

std::vector<PluginFile> PluginsInFolder(const std::string& folder) {
    std::vector<PluginFile> files;
    const fs::path path = ExistingFolder(folder);
    std::error_code error;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (IsLibraryName(entry->path()) && entry->is_regular_file(ignored)) {
            files.push_back({entry->path(), FromPath(entry->path().filename()), false});
        }
    }
    if (error) {
        throw Failure(ExitCode::kInputOutput,
                      "the folder \"" + Printable(ValidUtf8(folder)) +
                          "\" cannot be read: " + FromSystemBytes(error.message()));
    }
    std::sort(files.begin(), files.end(),
              [](const PluginFile& a, const PluginFile& b) { return a.name < b.name; });
    return files;
}

std::vector<PluginFile> PluginsByName(const std::string& folder,
                                      const std::vector<std::string>& names) {
    std::vector<PluginFile> files;
    files.reserve(names.size());
    const fs::path path = ExistingFolder(folder);
    for (const std::string& name : names) {
        files.push_back({ExistingFile(FromPath(path / ToPath(name))), name, true});
    }
    return files;
}

std::vector<PluginFile> PluginsByPath(const std::vector<std::string>& paths) {
    std::vector<PluginFile> files;
    for (const std::string& path : paths) {
        std::error_code ignored;
        if (fs::is_directory(ToPath(path), ignored)) {
            for (PluginFile& file : PluginsInFolder(path)) files.push_back(std::move(file));
        } else {
            const fs::path file = ExistingFile(path);
            if (!fs::is_regular_file(file, ignored)) {
                throw Failure(ExitCode::kInputOutput, InQuotes(path) + " is not a plain file");
            }
            (void)OpenInput(file, path);  // said before others take their time
            files.push_back({file, FromPath(file.filename()), true});
        }
    }
    return files;
}

}  // namespace tarnexctl
