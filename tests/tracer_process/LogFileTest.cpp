// The file itself: its name, its lines, and what happens where none can be made.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

#include "platform/NativePath.h"
#include "tracer_process/Sandbox.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TraceLogFile : public testing::Test {
protected:
    TraceLogFile() { trace_test::EnableLog(); }
    void RunWell(const std::vector<std::string>& commands) { RunWell(sandbox_, commands); }
    static platform::ChildResult RunWell(const trace_test::Sandbox& sandbox,
                                         const std::vector<std::string>& commands) {
        const auto result = sandbox.Run(commands);
        EXPECT_EQ(result.end, platform::ChildEnd::kExited) << result.reason;
        EXPECT_EQ(result.code, 0u) << result.output;
        return result;
    }
    trace_test::Sandbox sandbox_;
};

TEST_F(TraceLogFile, NameIsTheLocalTimeWithoutLeadingZeros) {
    RunWell({"load:trace_service"});
    ASSERT_THAT(sandbox_.LogFiles(), SizeIs(1));
    const std::string name = sandbox_.LogFiles()[0].filename().string();
    const std::string number = "(0|[1-9][0-9]*)";
    const std::regex form("trace_[1-9][0-9]{3}-" + number + "-" + number + " " + number + "-" +
                          number + "-" + number + "\\.log");
    EXPECT_TRUE(std::regex_match(name, form)) << name;
}

TEST_F(TraceLogFile, LinesHaveTheirForm) {
    RunWell({"load:trace_service", "say:trace_service:2:Hello, world", "say:trace_service:2:"});
    const std::vector<std::string> lines = sandbox_.LogLines();
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_EQ(lines[0], "trace_host");
    const std::string frame = "[0-9]{6}:[0-9]{3} \\[( {0,4}[0-9]|[0-9]{2,})+\\] ";
    EXPECT_TRUE(std::regex_match(lines[1], std::regex(frame + "Hello, world"))) << lines[1];
    EXPECT_TRUE(std::regex_match(lines[2], std::regex(frame))) << lines[2];
}

TEST_F(TraceLogFile, LineEndsAreThoseOfATextFile) {
    RunWell({"load:trace_service", "say:trace_service:2:hello"});
    const std::string bytes = sandbox_.LogBytes();
    const bool pairs = fs::path::preferred_separator == L'\\';
    EXPECT_TRUE(bytes.starts_with(pairs ? "trace_host\r\n" : "trace_host\n")) << bytes;
    EXPECT_TRUE(bytes.ends_with(pairs ? "hello\r\n" : "hello\n")) << bytes;
    EXPECT_EQ(bytes.find("\r\r"), std::string::npos);
}

TEST_F(TraceLogFile, MessageOf3000UnitsIsCutTo2048) {
    RunWell({"load:trace_service", "say_long:trace_service:3000", "say_long:trace_service:2047",
             "say:trace_service:2:after"});
    EXPECT_THAT(sandbox_.LogTexts(),
                ElementsAre(std::string(2048, 'x'), std::string(2047, 'x'), "after"));
}

TEST_F(TraceLogFile, FolderMayHaveAnyLetters) {
    const trace_test::Sandbox sandbox(L"Ordn\x00FC \x0416\x6F22");
    RunWell(sandbox, {"load:trace_service", "say:trace_service:2:hello"});
    EXPECT_THAT(sandbox.LogTexts(), ElementsAre("hello"));
}

TEST_F(TraceLogFile, FolderThatIsAFileCostsTheLogAlone) {
    std::ofstream(sandbox_.LogFolder()) << "in the way";
    trace_test::PutLogValue(L"LogToOutput", 1);
    const auto result =
        RunWell(sandbox_, {"load:trace_service", "await_record", "say:trace_service:2:hello"});
    EXPECT_THAT(result.error, testing::HasSubstr("Tracer::DumpThread - exception/warning - failed "
                                                 "to created directory"));
    EXPECT_THAT(result.error, testing::HasSubstr("hello"));
    EXPECT_TRUE(fs::is_regular_file(sandbox_.LogFolder()));
}

TEST_F(TraceLogFile, FolderThatVanishesHurtsNobody) {
    RunWell({"load:trace_service", "say:trace_service:2:before", "await_log", "remove_logs",
             "say_numbered:trace_service:5000", "free:trace_service"});
    for (const fs::path& file : sandbox_.LogFiles()) {
        EXPECT_GT(fs::file_size(file), 0u);  // a system that keeps an open file keeps it whole
    }
}

TEST_F(TraceLogFile, FolderThatVanishedIsMadeAgainByTheNextLoad) {
    RunWell({"load:trace_service", "say:trace_service:2:before", "await_log", "remove_logs",
             "say:trace_service:2:lost", "free:trace_service", "load:trace_service",
             "say:trace_service:2:after", "free:trace_service"});
    std::string all;
    for (const fs::path& file : sandbox_.LogFiles()) {
        std::string text;
        std::getline(std::ifstream(file), text, '\0');
        all += text;
    }
    EXPECT_THAT(all, testing::HasSubstr("] after"));
}

// Before the first line, or even before there is a log: as the thread comes to it.
TEST_F(TraceLogFile, FolderThatVanishesAtOnceHurtsNobody) {
    std::vector<std::string> commands;
    for (int round = 0; round < 5; ++round) {
        commands.insert(commands.end(), {"load:trace_service", "remove_logs",
                                         "say:trace_service:2:line", "free:trace_service"});
    }
    RunWell(commands);
}

TEST_F(TraceLogFile, EveryLoadMakesALogOfItsOwnOrTruncatesThatOfTheSameSecond) {
    RunWell({"load:trace_service", "say:trace_service:2:first", "free:trace_service",
             "load:trace_service", "say:trace_service:2:second"});
    std::vector<std::string> last;
    for (const fs::path& file : sandbox_.LogFiles()) {
        std::string text;
        std::getline(std::ifstream(file), text, '\0');
        const std::vector<std::string> lines = trace_test::Lines(text);
        ASSERT_THAT(lines, SizeIs(2));
        last.push_back(lines[1].substr(lines[1].find("] ") + 2));
    }
    EXPECT_THAT(last, testing::Contains("second"));
    EXPECT_THAT(last, testing::Each(testing::AnyOf("first", "second")));
}

}  // namespace
