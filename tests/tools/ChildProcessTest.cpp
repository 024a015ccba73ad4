// Running a child process, as the tools do it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "Tool.h"
#include "frame/Text.h"
#include "platform/LibrarySearch.h"

namespace {

using namespace tooltest;
using platform::ChildEnd;
using platform::ChildRequest;
using platform::ChildResult;

ChildRequest ToolRequest(std::vector<std::string> arguments) {
    ChildRequest request;
    const bool windows = std::string(platform::LibraryExtension()) == ".dll";
    request.program =
        tarnexctl::FromPath(ProgramFolder() / (windows ? "tarnexctl.exe" : "tarnexctl"));
    request.arguments = std::move(arguments);
    return request;
}

TEST(ChildProcess, ProgramThatDoesNotExistIsNotStarted) {
    ChildRequest request = ToolRequest({});
    request.program = "no such program";
    const ChildResult result = platform::RunChild(request);
    EXPECT_EQ(result.end, ChildEnd::kNotStarted);
    EXPECT_NE(result.reason, "");
}

TEST(ChildProcess, ExitCodeAndBothStreamsComeBack) {
    const ChildResult good = platform::RunChild(ToolRequest({"--version"}));
    EXPECT_EQ(good.end, ChildEnd::kExited);
    EXPECT_EQ(good.code, 0u);
    EXPECT_EQ(good.output.rfind("tarnexctl ", 0), 0u);
    const ChildResult bad = platform::RunChild(ToolRequest({"nonsense"}));
    EXPECT_EQ(bad.code, 2u);
    EXPECT_NE(bad.error, "");
}

TEST(ChildProcess, ArgumentsArriveWholeWhateverTheyHold) {
    for (const std::string argument :
         {"", "two words", "a\"b", "back\\slash\\", "both\\\"\\\\", "\xC3\xA4\xE6\xBC\xA2"}) {
        const ChildResult result = platform::RunChild(ToolRequest({"help", "--json", argument}));
        const Json document = Json::parse(result.output, nullptr, false);
        ASSERT_TRUE(document.is_object()) << argument << result.output << result.error;
        EXPECT_EQ(document["error"]["message"], "there is no command \"" + argument + "\"");
    }
}

TEST(ChildProcess, OutputPastTheLimitIsDroppedAndDoesNotHoldTheChildUp) {
    ChildRequest request = ToolRequest({"manpage"});
    request.outputLimit = 100;
    const ChildResult result = platform::RunChild(request);
    EXPECT_EQ(result.end, ChildEnd::kExited);
    EXPECT_EQ(result.output.size(), 100u);
}

TEST(ChildProcess, ChildThatNeverEndsIsEndedAndWhatItWroteIsKept) {
    ChildRequest request = ToolRequest({"probe-child", "--", ToolPlugin("NeverReturns")});
    request.timeoutMs = 2000;
    const auto start = std::chrono::steady_clock::now();
    const ChildResult result = platform::RunChild(request);
    EXPECT_EQ(result.end, ChildEnd::kTimedOut);
    EXPECT_NE(result.output.find("CreateFactory"), std::string::npos);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

TEST(ChildProcess, CrashIsTold) {
    const ChildResult result =
        platform::RunChild(ToolRequest({"probe-child", "--", ToolPlugin("CrashesOnLoad")}));
    EXPECT_EQ(result.end, ChildEnd::kCrashed);
    EXPECT_NE(result.reason, "");
}

}  // namespace
