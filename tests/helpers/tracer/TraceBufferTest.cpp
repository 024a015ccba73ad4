#include "helpers/tracer/TraceBuffer.h"

#include <gtest/gtest.h>

#include <cstring>

#include "MemoryLog.h"
#include "platform/Thread.h"

namespace {

using helpers::kRecordAreaBytes;
using helpers::Record;
using test_tracer::TestTracer;

TEST(TraceBuffer, RecordHasThePublishedLayout) {
    TestTracer test;
    const std::int64_t before = platform::CounterTime();
    ASSERT_TRUE(test.Append(0, u"hi\n"));
    helpers::RecordHeader header;
    std::memcpy(&header, test.Bytes(0), sizeof header);
    EXPECT_GE(header.time, before);
    EXPECT_LE(header.time, platform::CounterTime());
    EXPECT_EQ(header.threadId, platform::CurrentThreadId());
    EXPECT_EQ(header.length, 3u);
    EXPECT_EQ(std::memcmp(test.Bytes(0) + 24, u"hi\n", 6), 0);
    EXPECT_EQ(test.Used(0), 30);
}

TEST(TraceBuffer, FullBufferPutsItsCounterBack) {
    TestTracer test;
    test.tracer.Buffer(0).Close();
    const std::int32_t used = test.Used(0);
    EXPECT_FALSE(test.Append(0, u"x"));
    EXPECT_EQ(test.Used(0), used);
}

TEST(TraceBuffer, RecordThatPassesTheSpareRoomBecomesAFiller) {
    TestTracer test;
    const std::u16string big(2048, u'b');
    const std::int32_t offset = kRecordAreaBytes - 2;
    test.Used(0) = offset;
    EXPECT_FALSE(test.Append(0, big));
    EXPECT_TRUE(test.tracer.Buffer(0).IsFull());
    EXPECT_TRUE(test.tracer.Buffer(0).At(offset).IsFiller());
    EXPECT_EQ(test.Used(0), offset + Record::Size(2048));
}

TEST(TraceBuffer, RecordMayReachIntoTheSpareRoom) {
    TestTracer test;
    test.Used(0) = kRecordAreaBytes - 2;
    EXPECT_TRUE(test.Append(0, std::u16string(1000, u'x')));
    EXPECT_EQ(test.Used(0), kRecordAreaBytes - 2 + 2024);
}

TEST(TraceBuffer, ClosingFillerTakesAllThatIsLeft) {
    TestTracer test;
    ASSERT_TRUE(test.Append(0, u"x"));
    test.tracer.Buffer(0).Close();
    EXPECT_EQ(test.Used(0), kRecordAreaBytes);
    EXPECT_EQ(test.tracer.Buffer(0).At(26).Length(), (kRecordAreaBytes - 26) / 2u);
    EXPECT_TRUE(test.tracer.Buffer(0).At(26).IsFiller());
    test.tracer.Buffer(0).Close();
    EXPECT_EQ(test.Used(0), kRecordAreaBytes);
}

TEST(Tracer, TextIsCutTo2048CodeUnits) {
    TestTracer test;
    test.Write(std::wstring(3000, L'x'));
    EXPECT_EQ(test.tracer.Buffer(0).At(0).Length(), 2048u);
}

TEST(Tracer, EmptyTextMakesAnEmptyLine) {
    TestTracer test;
    test.Write(L"");
    test.Write(L"next\n");
    test.writer->Finish();
    EXPECT_EQ(test.sink.Lines(), (std::vector<std::string>{"", "next"}));
}

TEST(Tracer, LevelMaskDecides) {
    TestTracer test;
    test.tracer.SetLevelMask(4);
    test.tracer.Write(2, L"no\n");
    test.tracer.Write(4, L"yes\n");
    test.tracer.Write(6, L"also\n");
    test.writer->Finish();
    EXPECT_EQ(test.sink.Lines(), (std::vector<std::string>{"yes", "also"}));
}

TEST(Tracer, ClosedOrNotRunningDropsMessages) {
    TestTracer test;
    test.tracer.SetClosed(true);
    test.Write(L"no\n");
    test.tracer.SetClosed(false);
    test.tracer.SetRunning(false);
    test.Write(L"no\n");
    EXPECT_EQ(test.Used(0), 0);
}

TEST(Tracer, FullBufferSwitchesToTheEmptyOther) {
    TestTracer test;
    test.tracer.Buffer(0).Close();
    test.Write(L"x\n");
    EXPECT_EQ(test.tracer.Current(), 1u);
    EXPECT_EQ(test.Used(1), Record::Size(2));
}

TEST(Tracer, NeverSwitchesToABufferThatHoldsData) {
    TestTracer test;
    ASSERT_TRUE(test.Append(1, u"late"));
    test.tracer.Buffer(0).Close();
    test.tracer.SwitchFrom(0);
    EXPECT_EQ(test.tracer.Current(), 0u);
}

TEST(Tracer, MessageIsDroppedWhenBothStayFull) {
    TestTracer test;
    test.tracer.Buffer(0).Close();
    test.tracer.Buffer(1).Close();
    const std::int64_t before = platform::CounterTime();
    test.Write(L"dropped\n");
    EXPECT_GE(platform::CounterTime() - before, 1000 * 10'000);
    test.writer->Finish();
    EXPECT_TRUE(test.sink.Lines().empty());
}

TEST(Tracer, GarbageIsNotPlausible) {
    TestTracer test;
    EXPECT_TRUE(test.tracer.IsPlausible());
    test.Used(1) = -2;
    EXPECT_FALSE(test.tracer.IsPlausible());
    test.Used(1) = 0;
    test.layout->current = 2;
    EXPECT_FALSE(test.tracer.IsPlausible());
    std::memset(test.layout.get(), 0xA5, sizeof(helpers::TracerLayout));
    EXPECT_FALSE(test.tracer.IsPlausible());
}

}  // namespace
