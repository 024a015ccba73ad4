#include "helpers/tracer/service/LogWriter.h"

#include <gtest/gtest.h>

#include <cstring>

#include "MemoryLog.h"
#include "platform/Thread.h"

namespace {

using helpers::kRecordAreaBytes;
using helpers::Record;
using test_tracer::Death;
using test_tracer::TestTracer;
using Lines = std::vector<std::string>;

constexpr std::int64_t kUnitsOfPatience = helpers::LogWriter::kPatienceMs * 10'000;

bool IsZero(const std::byte* bytes, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        if (bytes[i] != std::byte{0}) return false;
    }
    return true;
}

TEST(LogWriter, QuietLineIsInTheLogWithinTwoWakeUps) {
    TestTracer test;
    test.Write(L"a\n");
    test.writer->DrainOnce();
    EXPECT_TRUE(test.sink.Lines().empty());
    EXPECT_EQ(test.tracer.Current(), 1u);
    test.writer->DrainOnce();
    EXPECT_EQ(test.sink.Lines(), Lines{"a"});
}

TEST(LogWriter, NothingToWriteLeavesTheBuffersAlone) {
    TestTracer test;
    test.writer->DrainOnce();
    EXPECT_EQ(test.tracer.Current(), 0u);
    EXPECT_EQ(test.Used(0), 0);
}

TEST(LogWriter, LateRecordInTheOtherBufferIsWrittenAtTheNextWakeUp) {
    TestTracer test;
    ASSERT_TRUE(test.Append(1, u"late\n"));
    test.Write(L"current\n");
    test.writer->DrainOnce();
    EXPECT_EQ(test.sink.Lines(), Lines{"late"});
    EXPECT_EQ(test.tracer.Current(), 0u);
}

TEST(LogWriter, GoesOnWhileTheBufferItMayTakeIsFull) {
    TestTracer test;
    ASSERT_TRUE(test.Append(0, u"first\n"));
    ASSERT_TRUE(test.Append(1, u"second\n"));
    test.tracer.Buffer(0).Close();
    test.tracer.Buffer(1).Close();
    test.layout->current = 1;
    test.writer->DrainOnce();
    EXPECT_EQ(test.sink.Lines(), (Lines{"first", "second"}));
}

TEST(LogWriter, WrittenBufferIsZeroAndEmpty) {
    TestTracer test;
    for (int i = 0; i < 100; ++i) test.Write(L"some text\n");
    test.writer->Finish();
    EXPECT_EQ(test.Used(0), 0);
    EXPECT_TRUE(IsZero(test.Bytes(0), helpers::kRecordRoomBytes));
    test.Write(L"again\n");
    test.writer->Finish();
    EXPECT_EQ(test.sink.Lines().size(), 101u);
}

TEST(LogWriter, FinishWritesTheOtherBufferFirst) {
    TestTracer test;
    ASSERT_TRUE(test.Append(0, u"new\n"));
    ASSERT_TRUE(test.Append(1, u"old\n"));
    test.writer->Finish();
    EXPECT_EQ(test.sink.Lines(), (Lines{"old", "new"}));
}

TEST(LogWriter, ThreadFilterLetsOneThreadPass) {
    TestTracer test;
    test.layout->buffers[0].threadFilter = platform::CurrentThreadId() + 1;
    test.Write(L"no\n");
    test.writer->Finish();
    test.layout->buffers[0].threadFilter = platform::CurrentThreadId();
    test.Write(L"yes\n");
    test.writer->Finish();
    EXPECT_EQ(test.sink.Lines(), Lines{"yes"});
}

TEST(LogWriter, RecordThatIsNeverFinishedLosesNothingBehindIt) {
    TestTracer test;
    ASSERT_TRUE(test.Append(0, u"before\n"));
    test.Used(0) += Record::Size(20);  // its thread died right after the reservation
    ASSERT_TRUE(test.Append(0, u"behind\n"));
    const std::int64_t start = platform::CounterTime();
    test.writer->Finish();
    // Half of it: a system's milliseconds may be short ones.
    EXPECT_GE(platform::CounterTime() - start, kUnitsOfPatience / 2);
    EXPECT_EQ(test.sink.Lines(), (Lines{"before", "behind"}));
    EXPECT_TRUE(IsZero(test.Bytes(0), 1000));
}

TEST(LogWriter, ThreadThatDiedWhileSwitchingStopsTheLogForAWhileOnly) {
    TestTracer test;
    test.Write(L"a\n");
    test.layout->switching = 1;
    test.writer->DrainOnce();
    EXPECT_TRUE(test.tracer.IsSwitching());
    for (int i = 0; i < 60'000 && test.sink.Lines().empty(); ++i) {
        platform::SleepMs(1);
        test.writer->DrainOnce();
    }
    EXPECT_EQ(test.sink.Lines(), Lines{"a"});
}

TEST(LogWriter, TakingOverWaitsForNobody) {
    TestTracer test;
    constexpr int kUnfinished = 60;  // more patience than any machine is slow
    for (int i = 0; i < kUnfinished; ++i) {
        test.Used(0) += Record::Size(20);
        ASSERT_TRUE(test.Append(0, u"behind\n"));
    }
    const std::int64_t start = platform::CounterTime();
    test.writer->TakeOver();
    EXPECT_LT(platform::CounterTime() - start, kUnfinished / 2 * kUnitsOfPatience);
    EXPECT_EQ(test.sink.Lines(), Lines(kUnfinished, "behind"));
}

TEST(LogWriter, RecordsOfAModuleThatMarksNothingAreWritten) {
    TestTracer test;
    helpers::RecordHeader header{platform::CounterTime(), 1, 0xCDCDCDCD, 3};
    std::memcpy(test.Bytes(0), &header, sizeof header);
    std::memcpy(test.Bytes(0) + 24, u"fo\n", 6);
    test.Used(0) = 30;
    test.writer->Finish();
    EXPECT_EQ(test.sink.Lines(), Lines{"fo"});
}

TEST(LogWriter, GarbageInABufferEndsTheWalkAndNothingElse) {
    for (const int fill : {0xFF, 0xA5, 0x01, 0x41}) {
        TestTracer test;
        std::memset(test.Bytes(0), fill, kRecordAreaBytes);
        test.Used(0) = 0x7FFFFFF0;
        test.writer->Finish();
        test.Used(0) = -5;
        test.writer->TakeOver();
        test.Used(0) = 0;
    }
}

// Dies in the write, at every byte of two lines, and again in taking over.
TEST(LogWriter, DeathInAWriteDoublesTearsAndLosesNothing) {
    for (std::size_t at = 0; at < 60; ++at) {
        TestTracer test;
        test.writer->WriteFirstLine("program\n");
        test.Write(L"first\n");
        test.Write(L"second\n");
        test.sink.deathAfter = at;
        try {
            test.writer->Finish();
        } catch (const Death&) {
            ASSERT_TRUE(test.Append(0, u"third\n"));
            test.writer->TakeOver();
        }
        Lines lines = test.sink.Lines();
        if (lines.size() == 4) lines.pop_back();  // the one that came after the death
        EXPECT_EQ(lines, (Lines{"program", "first", "second"})) << at;
    }
}

TEST(LogWriter, DeathBetweenChunksGoesOnWhereItWas) {
    for (const std::size_t at : {1u, 70'000u, 100'000u}) {
        TestTracer test;
        Lines expected;
        for (int i = 0; i < 2000; ++i) {
            const std::wstring number = std::to_wstring(i);
            test.Write(L"line " + number + L"\n");
            expected.push_back("line " + std::to_string(i));
        }
        test.sink.deathAfter = at;
        try {
            test.writer->Finish();
        } catch (const Death&) {
            test.writer->TakeOver();
        }
        EXPECT_EQ(test.sink.Lines(), expected) << at;
    }
}

TEST(LogWriter, ChunkThatCannotBeWrittenIsLostWhole) {
    TestTracer test;
    test.writer->WriteFirstLine("program\n");
    test.Write(L"lost\n");
    test.sink.fails = true;
    test.writer->Finish();
    test.sink.fails = false;
    test.Write(L"kept\n");
    test.writer->Finish();
    EXPECT_EQ(test.sink.Lines(), (Lines{"program", "kept"}));
}

}  // namespace
