#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <thread>

#include "Tool.h"
#include "frame/Text.h"
#include "platform/LibrarySearch.h"
#include "platform/Thread.h"

namespace {

using namespace tooltest;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

const char kLog[] =
    "host\n"
    "000000:012 [   11] all is well\n"
    "000000:011 [   12] Operation \"tarnex::GetTarnex\" returned error "
    "<eTarnexLockedByOtherProcess>\n"
    "000000:010 [   11] Operation \"a::B\" returned error <eWrongFXIdx>, property: \"Gain\"\n"
    "000000:009 [   11] Operation \"a::B\" returned error <eWrongFXIdx>\n";

TEST(LogCommand, CountsErrorsByOperationAndCodeAndLinesByThread) {
    const ScratchFolder scratch;
    const Json document = RunForJson({"log", scratch.Write("a.log", kLog)}, 1);
    EXPECT_EQ(document["program"], "host");
    EXPECT_EQ(document["lines"], 4);
    EXPECT_EQ(document["errors"], 3);
    ASSERT_EQ(document["byOperation"].size(), 2u);
    EXPECT_EQ(document["byOperation"][0]["operation"], "a::B");
    EXPECT_EQ(document["byOperation"][0]["count"], 2);
    EXPECT_EQ(document["byThread"][0]["thread"], 11);
    EXPECT_EQ(document["byThread"][0]["errors"], 2);
}

TEST(LogCommand, ErrorsOfOneThreadAreShownInOrder) {
    const ScratchFolder scratch;
    const std::string log = scratch.Write("a.log", kLog);
    const ToolRun run = RunTool({"log", "--errors", "--thread", "11", log});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out,
              "[11] Operation \"a::B\" returned error <eWrongFXIdx>, property: \"Gain\"\n"
              "[11] Operation \"a::B\" returned error <eWrongFXIdx>\n");
    const Json document = RunForJson({"log", "--errors", log}, 1);
    ASSERT_EQ(document["shown"].size(), 3u);
    EXPECT_EQ(document["shown"][1]["property"], "Gain");
}

TEST(LogCommand, LogWithoutErrorsIsFine) {
    const ScratchFolder scratch;
    const std::string log = scratch.Write("a.log", "host\n000001:000 [    1] hello\n");
    EXPECT_EQ(RunTool({"log", log}).code, 0);
    EXPECT_EQ(RunTool({"log", "--errors", log}).out, "");
}

TEST(LogCommand, MissingFileFolderEmptyAndBinaryFileHaveTheirOwnExitCodes) {
    const ScratchFolder scratch;
    EXPECT_EQ(RunTool({"log", "no such file.log"}).code, 3);
    EXPECT_EQ(RunTool({"log", tooltest::ProgramFolder().string()}).code, 4);
    EXPECT_EQ(RunTool({"log", scratch.Write("empty.log", "")}).code, 0);
    EXPECT_EQ(RunTool({"log", scratch.Write("zeros.log", std::string(4096, '\0'))}).code, 4);
    const std::string picture("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16);  // zeros on a later line alone
    EXPECT_EQ(RunTool({"log", scratch.Write("picture.log", picture)}).code, 4);
    // What a crash of the machine leaves behind the lines is no reason to show none.
    EXPECT_EQ(RunTool({"log", scratch.Write("cut.log", kLog + std::string(64, '\0'))}).code, 1);
}

TEST(LogCommand, BytesThatAreNoTextComeOutAsValidUtf8) {
    const ScratchFolder scratch;
    std::string bytes = "host\n";
    for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
    // RunTool checks the output.
    EXPECT_EQ(RunTool({"log", "--lines", scratch.Write("odd.log", bytes)}).code, 0);
    (void)RunForJson({"log", "--lines", scratch.Write("odd.log", bytes)}, 0);
}

TEST(LogCommand, TerminalCodesInALogAreShownNotObeyed) {
    const ScratchFolder scratch;
    const std::string log = scratch.Write("a.log", "host\n000000:000 [    1] \x1B]0;title\x07\n");
    const ToolRun run = RunTool({"log", "--lines", log});
    EXPECT_THAT(run.out, HasSubstr("\\x1B]0;title\\x07"));
}

TEST(LogCommand, FollowEndsAfterTheGivenTimeAndRefusesJson) {
    const ScratchFolder scratch;
    const std::string log = scratch.Write("a.log", kLog);
    const ToolRun run = RunTool({"log", "--follow", "--for", "0", "--errors", log});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.out, HasSubstr("eTarnexLockedByOtherProcess"));
    EXPECT_EQ(RunTool({"log", "--follow", "--json", log}).code, 2);
    EXPECT_EQ(RunTool({"log", "--for", "1", log}).code, 2);
}

// However late the program starts, what it shows at the end is the new file.
TEST(LogCommand, FollowJoinsHalfLinesAndStartsAnewWhereAnotherFileTookThePlace) {
    const ScratchFolder scratch;
    const std::string log = scratch.Write("a.log", "host\n000000:012 [   11] one ha");
    // Longer than the old one: its size alone does not tell.
    const std::string other = scratch.Write(
        "b.log", "host\n000000:012 [   12] new\n000000:012 [   13] another one\n000000:01");
    std::atomic<bool> ended = false;
    ToolRun run;
    std::thread follower([&] {
        run = RunTool({"log", "--follow", "--for", "2", log});
        ended = true;
    });
    bool replaced = false;
    for (int i = 0; !ended; ++i) {
        if (i == 5) std::ofstream(tarnexctl::ToPath(log), std::ios::app) << "lf\n";
        if (i >= 10 && !replaced) {  // whoever has it open may hinder it for a moment
            std::error_code error;
            std::filesystem::rename(tarnexctl::ToPath(other), tarnexctl::ToPath(log), error);
            replaced = !error;
        }
        platform::SleepMs(100);
    }
    follower.join();
    EXPECT_THAT(run.out, EndsWith("[12] new\n[13] another one\n000000:01\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("one ha\n")));
}

TEST(LogCommand, PipeIsReadOnceAndNotFollowed) {
    if (std::string(platform::LibraryExtension()) == ".dll") GTEST_SKIP() << "no /dev here";
    const ToolRun run =
        RunShell("printf 'host\\n000001:000 [    1] hello\\n' | \"$1\" log --lines /dev/stdin");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "[1] hello\n");
    EXPECT_EQ(RunTool({"log", "--follow", "/dev/stdin"}).code, 4);
}

}  // namespace
