// What the project's own files may not say, and how they are kept.

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "SourceTree.h"

namespace {

using structure::LinesOf;

std::vector<std::string> AllFiles() {
    std::vector<std::string> files = structure::TopLevelFiles();
    for (const char* folder : {".ci", "bench", "cmake", "docs", "examples", "fuzz", "include",
                               "src", "tests", "tools"}) {
        for (std::string& file : structure::FilesBelow(folder, {}))
            files.push_back(std::move(file));
    }
    return files;
}

// Texts speak of the system itself, in its own words, not of the papers it was planned on.
TEST(Texts, SpeakOfTheSystemItself) {
    // Put together here, so that this file does not hold what it looks for.
    const std::string paper = std::string("spec") + "ification";
    const std::regex unwanted(paper + "|" + "\\bPart" + " [1-6]\\.[1-6]|" + "\\bspec" + "\\.md\\b",
                              std::regex::icase | std::regex::optimize);
    const std::vector<std::string> files = AllFiles();
    ASSERT_GT(files.size(), 50u);
    for (const std::string& file : files) {
        std::size_t number = 0;
        for (const std::string& line : LinesOf(file)) {
            ++number;
            EXPECT_FALSE(std::regex_search(line, unwanted))
                << file << ":" << number << ": " << line;
        }
    }
}

// A source file past this length holds two ideas.
TEST(Texts, SourceFilesHoldOneIdea) {
    constexpr std::size_t kLines = 600;
    for (const std::string& file : AllFiles()) {
        const bool source = file.size() > 4 && (file.substr(file.size() - 4) == ".cpp" ||
                                                file.substr(file.size() - 2) == ".h");
        if (!source) continue;
        EXPECT_LE(LinesOf(file).size(), kLines) << file;
    }
}

}  // namespace
