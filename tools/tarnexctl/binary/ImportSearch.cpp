#include "binary/ImportSearch.h"

#include <algorithm>
#include <deque>
#include <fstream>
#include <set>

#include "frame/Text.h"
#include "platform/LibrarySearch.h"

namespace tarnexctl {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostDependencies = 4096;
constexpr std::uintmax_t kLargestFile = 1ull << 30;

std::string LowerCase(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

bool IsFile(const fs::path& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

// The folder `name` stands in by a search path that may begin with the library's own folder.
fs::path ExpandedFolder(const std::string& folder, const fs::path& own) {
    for (const std::string origin : {"$ORIGIN", "${ORIGIN}"}) {
        if (folder.compare(0, origin.size(), origin) == 0) {
            return fs::path(FromPath(own) + folder.substr(origin.size()));
        }
    }
    return ToPath(folder);
}

class Search {
public:
    explicit Search(const fs::path& library)
        : ownFolder_(library.parent_path()), systemFolders_(platform::LibrarySearchFolders()) {}

    std::vector<Dependency> Run(const fs::path& library, const LibraryImage& image) {
        machine_ = image.machine;
        pending_.push_back({library, image, false});
        while (!pending_.empty() && found_.size() < kMostDependencies) {
            const Pending next = std::move(pending_.front());
            pending_.pop_front();
            for (const ImageImport& import : next.image.imports) Visit(next, import);
        }
        return std::move(found_);
    }

private:
    struct Pending {
        fs::path path;
        LibraryImage image;
        bool delayed;
    };

    void Visit(const Pending& from, const ImageImport& import) {
        if (!seen_.insert(LowerCase(import.library)).second) return;
        Dependency dependency;
        dependency.name = import.library;
        dependency.wantedBy = FromPath(from.path.filename());
        dependency.delayed = import.delayed || from.delayed;
        bool inSystemFolder = false;
        if (!platform::IsLibraryVirtual(import.library)) {
            dependency.found = Find(import.library, from, inSystemFolder);
            dependency.missing =
                dependency.found.empty() && !platform::IsLibraryLoaded(import.library);
        }
        if (!dependency.found.empty() && !inSystemFolder) Examine(import, dependency);
        found_.push_back(std::move(dependency));
    }

    fs::path Find(const std::string& name, const Pending& from, bool& inSystemFolder) const {
        fs::path own = ownFolder_ / ToPath(name);
        // Only Windows looks beside the library unasked.
        if (from.image.format == ImageFormat::kPe && IsFile(own)) return own;
        for (const std::string& folder : from.image.searchFolders) {
            fs::path path = ExpandedFolder(folder, from.path.parent_path()) / ToPath(name);
            if (IsFile(path)) return path;
        }
        for (const std::string& folder : systemFolders_) {
            fs::path path = ToPath(folder) / ToPath(name);
            if (!IsFile(path)) continue;
            inSystemFolder = true;
            return path;
        }
        return {};
    }

    // A dependency of the plug-in's own is read like the plug-in itself.
    void Examine(const ImageImport& import, Dependency& dependency) {
        std::string problem;
        const std::vector<std::byte> bytes = ReadWholeFile(dependency.found, problem);
        LibraryImage image = ReadLibraryImage(bytes);
        if (image.machine != machine_) dependency.wrongMachine = image.machine;
        if (image.problem.empty()) {
            const std::set<std::string> exports(image.exports.begin(), image.exports.end());
            for (const std::string& function : import.functions) {
                if (function.front() == '#' || exports.contains(function)) continue;
                dependency.missingFunction = function;
                break;
            }
        }
        pending_.push_back({dependency.found, std::move(image), dependency.delayed});
    }

    fs::path ownFolder_;
    std::vector<std::string> systemFolders_;
    std::string machine_;
    std::deque<Pending> pending_;
    std::set<std::string> seen_;
    std::vector<Dependency> found_;
};

}  // namespace

std::vector<Dependency> FindDependencies(const fs::path& library, const LibraryImage& image) {
    return Search(library).Run(library, image);
}

std::vector<std::byte> ReadWholeFile(const fs::path& path, std::string& problem) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size > kLargestFile) {
        problem = error ? error.message() : "the file is larger than 1 GiB";
        return {};
    }
    std::ifstream file(path, std::ios::binary);
    std::vector<std::byte> bytes(size);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
    if (!file) {
        problem = "it cannot be read";
        return {};
    }
    return bytes;
}

std::string SharedCppRuntime(const LibraryImage& image) {
    for (const ImageImport& import : image.imports) {
        const std::string name = LowerCase(import.library);
        for (const char* runtime : {"libstdc++", "libc++", "msvcp"}) {
            if (name.compare(0, std::string(runtime).size(), runtime) == 0) return import.library;
        }
    }
    return {};
}

}  // namespace tarnexctl
