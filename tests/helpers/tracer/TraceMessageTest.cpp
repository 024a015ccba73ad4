// Messages as producers see them. The tracer is one in memory of its own.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <limits>
#include <memory>
#include <regex>
#include <sstream>
#include <thread>

#include "MemoryLog.h"
#include "helpers/tracer/ModuleTracer.h"
#include "helpers/tracer/SecondLog.h"
#include "helpers/tracer/TraceMessage.h"
#include "platform/NativePath.h"
#include "platform/SettingsStore.h"

namespace {

using helpers::TraceMessage;
using testing::ElementsAre;

class TraceMessageTest : public testing::Test {
protected:
    TraceMessageTest() { helpers::PublishTracer(*test_.layout); }
    ~TraceMessageTest() override { helpers::WithdrawTracer(); }
    std::vector<std::string> Lines() {
        test_.writer->Finish();
        return test_.sink.Lines();
    }
    test_tracer::TestTracer test_;
};

// No string is that long, so the memory for it is refused whatever the machine has.
const std::wstring_view kEndless(L"x", std::numeric_limits<std::size_t>::max() / 4);

TEST_F(TraceMessageTest, NarrowAndWidePiecesMakeOneLine) {
    TraceMessage().Append("narrow, ").Append(std::wstring_view(L"wide")).Append(".");
    EXPECT_THAT(Lines(), ElementsAre("narrow, wide."));
}

TEST_F(TraceMessageTest, LevelZeroCountsAsTwo) {
    test_.tracer.SetLevelMask(2);
    TraceMessage(0).Append("zero");
    TraceMessage(1).Append("one");
    TraceMessage(2).Append("two");
    EXPECT_THAT(Lines(), ElementsAre("zero", "two"));
}

TEST_F(TraceMessageTest, OpeningOneResetsTheFormat) {
    TraceMessage::SetFormat(3, 16);
    const TraceMessage message;
    EXPECT_EQ(TraceMessage::FormatPrecision(), 6);
    EXPECT_EQ(TraceMessage::FormatRadix(), 10);
}

TEST_F(TraceMessageTest, PieceWithoutMemoryIsLeftOut) {
    EXPECT_NO_THROW(TraceMessage().Append("before ").Append(kEndless).Append("after"));
    EXPECT_THAT(Lines(), ElementsAre("before after"));
}

TEST_F(TraceMessageTest, SecondLogGetsTheTextsOfAllMessages) {
    const test_platform::TempFolder folder;
    const std::filesystem::path file = folder.Path() / "second.log";
    test_.tracer.SetLevelMask(0);
    helpers::SecondLog::SetFile(platform::WidePath(file.native()));
    TraceMessage().Append("one");
    TraceMessage(8).Append("two");
    helpers::SecondLog::SetFile(L"");
    TraceMessage().Append("three");
    std::ifstream stream(file);
    std::stringstream text;
    text << stream.rdbuf();
    EXPECT_TRUE(std::regex_match(text.str(), std::regex("one\r?\ntwo\r?\n")));
    EXPECT_THAT(Lines(), ElementsAre());
}

TEST_F(TraceMessageTest, SecondLogThatCannotBeOpenedIsDoneWithout) {
    const test_platform::TempFolder folder;
    helpers::SecondLog::SetFile(platform::WidePath((folder.Path() / "none" / "log").native()));
    TraceMessage().Append("one");
    helpers::SecondLog::SetFile(L"");
    EXPECT_THAT(Lines(), ElementsAre("one"));
}

TEST_F(TraceMessageTest, IsHeardWhileThereIsATracerOrASecondLog) {
    const test_platform::TempFolder folder;
    EXPECT_TRUE(TraceMessage::IsHeard());
    helpers::WithdrawTracer();
    EXPECT_FALSE(TraceMessage::IsHeard());
    helpers::SecondLog::SetFile(platform::WidePath((folder.Path() / "second.log").native()));
    EXPECT_TRUE(TraceMessage::IsHeard());
    helpers::SecondLog::SetFile(L"");
    EXPECT_FALSE(TraceMessage::IsHeard());
}

TEST_F(TraceMessageTest, IsHeardWhereItWouldBeWritten) {
    test_.tracer.SetLevelMask(6);
    EXPECT_TRUE(TraceMessage::IsHeard());
    EXPECT_TRUE(TraceMessage::IsHeard(4));
    EXPECT_FALSE(TraceMessage::IsHeard(8));
    test_.tracer.SetLevelMask(4);
    EXPECT_FALSE(TraceMessage::IsHeard());
    EXPECT_FALSE(TraceMessage::IsHeard(2));
    test_.tracer.SetLogToOutput(true);
    EXPECT_TRUE(TraceMessage::IsHeard());
    test_.tracer.SetRunning(false);
    EXPECT_TRUE(TraceMessage::IsHeard(4));
    test_.tracer.SetLogToOutput(false);
    EXPECT_FALSE(TraceMessage::IsHeard(4));
    test_.tracer.SetRunning(true);
    EXPECT_TRUE(TraceMessage::IsHeard(4));
}

// Sanitizers would see who reads a block that is gone.
TEST(TraceMessages, AreAskedForWhileTracersComeAndGo) {
    std::atomic<bool> isOver = false;
    std::atomic<int> heard = 0;
    std::thread asking([&] {
        while (!isOver) heard += TraceMessage::IsHeard() ? 1 : 0;
    });
    for (int round = 0; round < 50 || (heard == 0 && round < 10'000); ++round) {
        const auto tracer = std::make_unique<test_tracer::TestTracer>();
        helpers::PublishTracer(*tracer->layout);
        std::this_thread::yield();
        helpers::WithdrawTracer();
    }
    isOver = true;
    asking.join();
    EXPECT_GT(heard, 0);
    EXPECT_FALSE(TraceMessage::IsHeard());
}

TEST_F(TraceMessageTest, AskingWhetherItIsHeardResetsTheFormat) {
    TraceMessage::SetFormat(3, 16);
    TraceMessage::IsHeard();
    EXPECT_EQ(TraceMessage::FormatPrecision(), 6);
    EXPECT_EQ(TraceMessage::FormatRadix(), 10);
}

TEST_F(TraceMessageTest, WithoutATracerItIsDropped) {
    helpers::WithdrawTracer();
    TraceMessage().Append("nobody");
    EXPECT_THAT(Lines(), ElementsAre());
}

}  // namespace
