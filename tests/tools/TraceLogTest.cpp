#include "logs/TraceLog.h"

#include <gtest/gtest.h>

#include "frame/Text.h"

namespace {

using namespace tarnexctl;

TEST(TraceLog, LineIsTakenApart) {
    const LogLine line = ReadLogLine("000012:345 [ 4711] hello", 2);
    EXPECT_TRUE(line.regular);
    EXPECT_EQ(line.ageMs, 12345u);
    EXPECT_EQ(line.thread, 4711u);
    EXPECT_EQ(line.text, "hello");
    EXPECT_FALSE(line.error);
}

TEST(TraceLog, LongThreadNumbersAndAgesKeepTheirDigits) {
    const LogLine line = ReadLogLine("1234567:001 [1234567] x", 2);
    EXPECT_TRUE(line.regular);
    EXPECT_EQ(line.thread, 1234567u);
}

TEST(TraceLog, ReportedErrorsAreRecognisedInEveryForm) {
    const auto named = ReadReportedError("Operation \"a::B<int>\" returned error <eX>");
    ASSERT_TRUE(named);
    EXPECT_EQ(named->operation, "a::B<int>");
    EXPECT_EQ(named->code, "eX");
    const auto unnamed = ReadReportedError("Operation returned error <eY>");
    ASSERT_TRUE(unnamed);
    EXPECT_EQ(unnamed->operation, "");
    const auto property =
        ReadReportedError("Operation \"a\" returned error <eZ>, property: \"say \"hi\"\"");
    ASSERT_TRUE(property);
    EXPECT_EQ(property->property, "say \"hi\"");
}

TEST(TraceLog, TextsThatOnlyResembleAnErrorAreNone) {
    for (const char* text :
         {"", "Operation", "Operation \"", "Operation \"a\"", "Operation \"a\" returned error ",
          "Operation \"a\" returned error <e", "an Operation \"a\" returned error <e>"}) {
        EXPECT_FALSE(ReadReportedError(text)) << text;
    }
}

TEST(TraceLog, LinesCutAnywhereAndGarbledLinesAreKeptAsTheyAre) {
    const std::string whole = "000012:345 [ 4711] Operation \"a\" returned error <eX>";
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const LogLine line = ReadLogLine(whole.substr(0, size), 2);
        EXPECT_FALSE(line.error);
        EXPECT_EQ(line.regular, size >= 19) << size;
    }
    for (const char* text : {"000012:3456 [1] x", "12:345[1] x", "000012:345 [99999999999] x",
                             "-00012:345 [1] x", "99999999999999999999:000 [1] x"}) {
        EXPECT_FALSE(ReadLogLine(text, 2).regular) << text;
        EXPECT_EQ(ReadLogLine(text, 2).text, text);
    }
    EXPECT_TRUE(IsValidUtf8(ReadLogLine("\xFF\xFE\x80", 2).text));
}

TEST(TraceLog, LinesAreCutTheSameHoweverTheBytesCome) {
    const std::string text = "host\r\nfirst\n\nlast without an end";
    for (std::size_t step = 1; step <= text.size(); ++step) {
        LineCutter cutter;
        std::vector<std::string> lines;
        const auto take = [&](std::string_view line, std::size_t number) {
            lines.emplace_back(line);
            EXPECT_EQ(number, lines.size());
        };
        for (std::size_t i = 0; i < text.size(); i += step) cutter.Feed(text.substr(i, step), take);
        cutter.End(take);
        EXPECT_EQ(lines, (std::vector<std::string>{"host", "first", "", "last without an end"}));
    }
}

TEST(TraceLog, FileWithoutLineEndsIsCutIntoPieces) {
    LineCutter cutter;
    std::size_t lines = 0;
    std::size_t bytes = 0;
    const auto take = [&](std::string_view line, std::size_t) {
        ++lines;
        bytes += line.size();
    };
    const std::string piece(300000, 'x');
    for (int i = 0; i < 10; ++i) cutter.Feed(piece, take);
    cutter.End(take);
    EXPECT_EQ(bytes, 3000000u);
    EXPECT_EQ(lines, 3u);
}

TEST(TraceLog, SummaryCountsWhatItWasGiven) {
    LogSummary summary;
    std::size_t number = 0;
    for (const char* line : {"host", "000000:000 [1] fine", "continued",
                             "000000:000 [2] Operation returned error <eX>"}) {
        summary.Add(ReadLogLine(line, ++number));
    }
    EXPECT_EQ(summary.program, "host");
    EXPECT_EQ(summary.lines, 3u);
    EXPECT_EQ(summary.irregular, 1u);
    EXPECT_EQ(summary.errors, 1u);
    EXPECT_EQ(summary.threads.at(2).errors, 1u);
    EXPECT_EQ((summary.byOperation.at({"", "eX"})), 1u);
}

}  // namespace
