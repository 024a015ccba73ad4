#include "SourceTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>

namespace structure {

namespace fs = std::filesystem;

fs::path SourceRoot() {
    return TARNEX_SOURCE_DIR;
}

std::vector<std::string> FilesBelow(const std::string& folder,
                                    const std::vector<std::string>& extensions) {
    std::vector<std::string> files;
    const fs::path start = SourceRoot() / folder;
    if (!fs::exists(start)) return files;
    for (const auto& entry : fs::recursive_directory_iterator(start)) {
        const std::string extension = entry.path().extension().string();
        if (entry.is_regular_file() &&
            (extensions.empty() ||
             std::find(extensions.begin(), extensions.end(), extension) != extensions.end())) {
            files.push_back(entry.path().lexically_relative(SourceRoot()).generic_string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> TopLevelFiles() {
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(SourceRoot())) {
        // A worktree's .git is a file, and no text of the project.
        if (entry.is_regular_file() && entry.path().filename() != ".git") {
            files.push_back(entry.path().filename().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> LinesOf(const std::string& path) {
    std::ifstream file(SourceRoot() / path);
    EXPECT_TRUE(file) << path << " cannot be read";
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

std::vector<std::string> QuotedIncludes(const std::string& path) {
    static const std::regex kInclude("^\\s*#\\s*include\\s*\"([^\"]+)\"");
    std::vector<std::string> includes;
    for (const std::string& line : LinesOf(path)) {
        std::smatch match;
        if (std::regex_search(line, match, kInclude)) includes.push_back(match[1]);
    }
    return includes;
}

}  // namespace structure
