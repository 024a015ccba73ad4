// The other places for the log. Here their drive is a folder of that name below the current one.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tracer_process/Sandbox.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class TracePlaces : public testing::Test {
protected:
    TracePlaces() {
        trace_test::EnableLog();
        std::ofstream(sandbox_.LogFolder()) << "in the way";
        fs::create_directory(current_.Path() / "d:");
        fs::current_path(current_.Path());
    }
    ~TracePlaces() override { fs::current_path(before_); }
    void Run() {
        const auto result =
            sandbox_.Run({"load:trace_service", "await_record", "say:trace_service:2:hello"});
        EXPECT_EQ(result.end, platform::ChildEnd::kExited) << result.reason;
        EXPECT_EQ(result.code, 0u);
    }
    const fs::path before_ = fs::current_path();
    trace_test::Sandbox sandbox_;
    test_platform::TempFolder current_;
};

TEST_F(TracePlaces, NextPlaceIsTriedWhenTheFolderCannotBeMade) {
    Run();
    std::string text;
    for (const auto& entry : fs::directory_iterator(current_.Path() / "d:" / "Logs")) {
        std::ifstream stream(entry.path());
        std::getline(stream, text, '\0');
    }
    EXPECT_THAT(trace_test::Lines(text),
                ElementsAre("trace_host", testing::EndsWith("failed to created directory"),
                            testing::EndsWith("hello")));
}

TEST_F(TracePlaces, LastPlaceIsTheDriveItself) {
    std::ofstream(current_.Path() / "d:" / "Logs") << "in the way";
    Run();
    int logs = 0;
    for (const auto& entry : fs::directory_iterator(current_.Path() / "d:")) {
        logs += entry.path().extension() == ".log" ? 1 : 0;
    }
    EXPECT_EQ(logs, 1);
}

// The folder goes although a file in it is open; the tracer neither notices nor makes it again.
TEST(TraceFolder, IsGoneOnceItIsRemoved) {
    trace_test::EnableLog();
    const trace_test::Sandbox sandbox;
    const auto result =
        sandbox.Run({"load:trace_service", "say:trace_service:2:before", "await_log", "remove_logs",
                     "say_numbered:trace_service:5000", "free:trace_service"});
    EXPECT_EQ(result.end, platform::ChildEnd::kExited) << result.reason;
    EXPECT_EQ(result.code, 0u);
    EXPECT_FALSE(fs::exists(sandbox.LogFolder()));
}

}  // namespace
