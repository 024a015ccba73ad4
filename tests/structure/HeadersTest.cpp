// Every public header stands on its own, and lives with the system's own headers.

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <vector>

#include "Compiler.h"
#include "SourceTree.h"

namespace {

using structure::CommandResult;
using structure::Run;

// Paths as an #include names them.
std::vector<std::string> PublicHeaders() {
    std::vector<std::string> headers;
    for (const std::string& file : structure::FilesBelow("include", {".h"})) {
        headers.push_back(file.substr(std::string("include/").size()));
    }
    return headers;
}

CommandResult Compile(const std::string& compiler, const std::string& source) {
    return Run({compiler, "-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-I",
                (structure::SourceRoot() / "include").string(), "-fsyntax-only", "-x", "c++", "-"},
               source);
}

std::string Include(const std::string& header) {
    return "#include \"" + header + "\"\n";
}

TEST(Headers, EachPublicHeaderCompilesAlone) {
    const std::vector<std::string> headers = PublicHeaders();
    ASSERT_GT(headers.size(), 10u);
    std::vector<std::future<CommandResult>> results;
    for (const std::string& header : headers) {
        results.push_back(std::async(std::launch::async, [header] {
            return Compile(TARNEX_NATIVE_COMPILER, Include(header));
        }));
    }
    for (std::size_t at = 0; at < headers.size(); ++at) {
        const CommandResult result = results[at].get();
        EXPECT_EQ(result.status, 0) << headers[at] << ":\n" << result.output;
    }
}

class HeadersOnWindows : public testing::Test {
protected:
    void SetUp() override {
        if (std::string(TARNEX_CROSS_COMPILER).empty()) {
            GTEST_SKIP() << "x86_64-w64-mingw32-g++-posix is not installed";
        }
    }

    static std::string AllPublicHeaders() {
        std::string includes;
        for (const std::string& header : PublicHeaders()) includes += Include(header);
        return includes;
    }
};

TEST_F(HeadersOnWindows, CompileAfterWindowsHeader) {
    const CommandResult result =
        Compile(TARNEX_CROSS_COMPILER, "#include <windows.h>\n" + AllPublicHeaders());
    EXPECT_EQ(result.status, 0) << result.output;
}

TEST_F(HeadersOnWindows, CompileBeforeWindowsHeader) {
    const CommandResult result =
        Compile(TARNEX_CROSS_COMPILER, AllPublicHeaders() + "#include <windows.h>\n");
    EXPECT_EQ(result.status, 0) << result.output;
}

TEST_F(HeadersOnWindows, NeedNoSystemHeaderThemselves) {
    const CommandResult result = Compile(
        TARNEX_CROSS_COMPILER, AllPublicHeaders() + "#ifdef _WINDOWS_\n#error windows.h\n#endif\n");
    EXPECT_EQ(result.status, 0) << result.output;
}

}  // namespace
