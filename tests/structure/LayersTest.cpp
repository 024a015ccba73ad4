// The house stands on its first row: a folder includes only what stands above it.

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "SourceTree.h"

namespace {

using structure::FilesBelow;
using structure::LinesOf;
using structure::QuotedIncludes;

// From the ground up; folders of one row know nothing of each other unless named as a pair below.
const std::vector<std::vector<std::string>> kRows = {
    {"include"},
    {"src/platform"},
    {"src/helpers/regs"},
    {"src/helpers/tracer"},
    {"src/helpers/report"},
    {"src/base_types"},
    {"src/fx"},
    {"src/helpers/scripting"},
    {"src/compositions"},
    {"src/tarnex"},
    {"tools"},
};

// Which row a file stands in; -1 for none.
int RowOf(const std::string& path) {
    for (std::size_t row = 0; row < kRows.size(); ++row) {
        for (const std::string& folder : kRows[row]) {
            if (path.rfind(folder + "/", 0) == 0) return static_cast<int>(row);
        }
    }
    return -1;
}

// The project file that an include means: beside the includer, in include/, in src/, or
// in the folder of its program.
std::string Resolve(const std::string& includer, const std::string& include) {
    const std::string folder = includer.substr(0, includer.rfind('/'));
    for (const std::string& base :
         {folder, std::string("include"), std::string("src"), std::string("tools/tarnexctl")}) {
        const std::string path =
            std::filesystem::path(base + "/" + include).lexically_normal().generic_string();
        if (std::filesystem::exists(structure::SourceRoot() / path)) return path;
    }
    return {};
}

std::vector<std::string> Sources() {
    std::vector<std::string> all;
    for (const char* folder : {"include", "src", "tools"}) {
        for (std::string& file : FilesBelow(folder, {".h", ".cpp"})) all.push_back(std::move(file));
    }
    return all;
}

TEST(Layers, EverySourceStandsInARow) {
    const std::vector<std::string> sources = Sources();
    ASSERT_GT(sources.size(), 20u);
    for (const std::string& file : sources) EXPECT_GE(RowOf(file), 0) << file;
}

TEST(Layers, FoldersIncludeOnlyWhatStandsAboveThem) {
    for (const std::string& file : Sources()) {
        for (const std::string& include : QuotedIncludes(file)) {
            const std::string target = Resolve(file, include);
            EXPECT_FALSE(target.empty()) << file << " includes " << include << ": no such file";
            if (!target.empty()) {
                EXPECT_GE(RowOf(file), RowOf(target)) << file << " includes " << target;
            }
        }
    }
}

// Walks the includes depth first; `path` holds the files on the way to `file`.
void FindCircles(const std::string& file, std::vector<std::string>& path,
                 std::set<std::string>& done) {
    for (const std::string& onTheWay : path) {
        ASSERT_NE(onTheWay, file) << "a circle of includes through " << path.back();
    }
    if (!done.insert(file).second) return;
    path.push_back(file);
    for (const std::string& include : QuotedIncludes(file)) {
        const std::string target = Resolve(file, include);
        if (!target.empty()) FindCircles(target, path, done);
    }
    path.pop_back();
}

TEST(Layers, NoIncludesGoInCircles) {
    std::set<std::string> done;
    for (const std::string& file : Sources()) {
        std::vector<std::string> path;
        FindCircles(file, path, done);
    }
}

TEST(Layers, OnlyThePlatformKnowsTheSystem) {
    // The export macro, and the one place where two compilers lay overloads out differently.
    const std::set<std::string> kAllowed = {"include/tarnex/Export.h",
                                            "include/base_types/IPropertySet.h"};
    for (const std::string& file : Sources()) {
        if (file.rfind("src/platform/", 0) == 0 || kAllowed.count(file)) continue;
        for (const std::string& line : LinesOf(file)) {
            for (const char* word : {"_WIN32", "_WIN64", "_MSC_VER", "__MINGW", "__linux__",
                                     "<windows.h>", "<Windows.h>", "<unistd.h>"}) {
                EXPECT_EQ(line.find(word), std::string::npos) << file << ": " << line;
            }
        }
    }
}

TEST(Layers, PlatformHeadersDoNotIncludeTheSystems) {
    for (const std::string& file : FilesBelow("src/platform", {".h"})) {
        if (file.rfind("src/platform/windows/", 0) == 0) continue;
        if (file.rfind("src/platform/posix/", 0) == 0) continue;
        for (const std::string& line : LinesOf(file)) {
            EXPECT_EQ(line.find("_WIN32"), std::string::npos) << file;
            EXPECT_EQ(line.find("windows.h"), std::string::npos) << file;
        }
    }
}

}  // namespace
