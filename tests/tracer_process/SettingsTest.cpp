// What the values of the settings make of the log.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "tracer_process/Sandbox.h"

namespace {

using test_platform::ValueKind;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using trace_test::PutLogValue;

class TraceSettings : public testing::Test {
protected:
    TraceSettings() { test_platform::ResetSettings(); }
    // One process that says a line at level 2; returns what it answered.
    platform::ChildResult Say() {
        const auto result =
            sandbox_.Run({"load:trace_service", "peek", "say:trace_service:2:hello"});
        EXPECT_EQ(result.end, platform::ChildEnd::kExited) << result.reason;
        EXPECT_EQ(result.code, 0u);
        return result;
    }
    trace_test::Sandbox sandbox_;
};

TEST_F(TraceSettings, MissingEnabledMakesNoFileAndNoThread) {
    PutLogValue(L"Level", 0xFFFFFFFF);
    PutLogValue(L"LogToOutput", 1);
    const auto result = Say();
    EXPECT_THAT(result.output,
                HasSubstr("references 1 running 0 closed 1 level 0 output 0 thread no"));
    EXPECT_EQ(result.error, "");
    EXPECT_FALSE(std::filesystem::exists(sandbox_.LogFolder()));
}

TEST_F(TraceSettings, EnabledZeroMakesNoFileAndNoThreadButLeavesTheTracerOpen) {
    PutLogValue(L"Enabled", 0);
    PutLogValue(L"Level", 0xFFFFFFFF);
    PutLogValue(L"LogToOutput", 1);
    const auto result = Say();
    EXPECT_THAT(result.output,
                HasSubstr("references 1 running 0 closed 0 level 0 output 0 thread no"));
    EXPECT_EQ(result.error, "");
    EXPECT_FALSE(std::filesystem::exists(sandbox_.LogFolder()));
}

TEST_F(TraceSettings, EnabledOneWritesTheLog) {
    PutLogValue(L"Enabled", 1);
    PutLogValue(L"Level", 2);
    const auto result = Say();
    EXPECT_THAT(result.output,
                HasSubstr("references 1 running 1 closed 0 level 2 output 0 thread yes"));
    EXPECT_EQ(result.error, "");
    EXPECT_THAT(sandbox_.LogLines(), testing::SizeIs(2));
    EXPECT_THAT(sandbox_.LogTexts(), ElementsAre("hello"));
}

TEST_F(TraceSettings, EnabledOfAnotherTypeWithFourBytesCounts) {
    PutLogValue(L"Enabled", ValueKind::kBinary, {0, 0, 0, 1});
    PutLogValue(L"Level", ValueKind::kBinary, {2, 0, 0, 0});
    Say();
    EXPECT_THAT(sandbox_.LogTexts(), ElementsAre("hello"));
}

TEST_F(TraceSettings, EnabledAsAWordIsUnreadable) {
    PutLogValue(L"Enabled", ValueKind::kString, test_platform::StringBytes(u"yes"));
    EXPECT_THAT(Say().output, HasSubstr("running 0 closed 1"));
    EXPECT_FALSE(std::filesystem::exists(sandbox_.LogFolder()));
}

TEST_F(TraceSettings, EnabledOfEightBytesIsUnreadable) {
    PutLogValue(L"Enabled", ValueKind::kBinary, {1, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_THAT(Say().output, HasSubstr("running 0 closed 1"));
    EXPECT_FALSE(std::filesystem::exists(sandbox_.LogFolder()));
}

TEST_F(TraceSettings, MissingLevelMakesAFileWithOnlyTheFirstLine) {
    PutLogValue(L"Enabled", 1);
    EXPECT_EQ(Say().error, "");
    EXPECT_THAT(sandbox_.LogLines(), ElementsAre("trace_host"));
}

TEST_F(TraceSettings, LevelOfWrongSizeCountsAsMissing) {
    PutLogValue(L"Enabled", 1);
    PutLogValue(L"Level", ValueKind::kBinary, {255, 255, 255, 255, 255});
    EXPECT_THAT(Say().output, HasSubstr("level 0"));
    EXPECT_THAT(sandbox_.LogLines(), ElementsAre("trace_host"));
}

TEST_F(TraceSettings, LevelMaskLetsItsBitsPassAlone) {
    PutLogValue(L"Enabled", 1);
    PutLogValue(L"Level", 0x80000006);
    sandbox_.Run({"load:trace_service", "say:trace_service:1:one", "say:trace_service:2:two",
                  "say:trace_service:4:four", "say:trace_service:8:eight",
                  "say:trace_service:12:four and eight", "say:trace_service:2147483648:top",
                  "say:trace_service:0:none is two"});
    EXPECT_THAT(sandbox_.LogTexts(),
                ElementsAre("two", "four", "four and eight", "top", "none is two"));
}

TEST_F(TraceSettings, LogToOutputMirrorsEveryLineThatIsWritten) {
    PutLogValue(L"Enabled", 1);
    PutLogValue(L"Level", 2);
    PutLogValue(L"LogToOutput", 1);
    const auto result = Say();
    ASSERT_THAT(trace_test::Lines(result.error), testing::SizeIs(1));
    const std::string line = trace_test::Lines(result.error)[0];
    EXPECT_TRUE(std::regex_match(line, std::regex("[0-9]{6}:[0-9]{3} \\[[ 0-9]+\\] hello")))
        << line;
    EXPECT_THAT(sandbox_.LogTexts(), ElementsAre("hello"));
}

TEST_F(TraceSettings, LogToOutputPassesTheBareTextOfARefusedLevel) {
    PutLogValue(L"Enabled", 1);
    PutLogValue(L"Level", 4);
    PutLogValue(L"LogToOutput", 1);
    EXPECT_THAT(trace_test::Lines(Say().error), ElementsAre("hello"));
    EXPECT_THAT(sandbox_.LogTexts(), ElementsAre());
}

TEST_F(TraceSettings, LogToOutputOfAnyOtherNumberIsOff) {
    PutLogValue(L"Enabled", 1);
    PutLogValue(L"Level", 2);
    PutLogValue(L"LogToOutput", 2);
    const auto result = Say();
    EXPECT_THAT(result.output, HasSubstr("output 0"));
    EXPECT_EQ(result.error, "");
}

}  // namespace
