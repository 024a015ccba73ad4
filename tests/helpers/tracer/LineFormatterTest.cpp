#include "helpers/tracer/service/LineFormatter.h"

#include <gtest/gtest.h>

#include <regex>

#include "MemoryLog.h"

namespace {

using helpers::LineBuffer;

std::string Line(std::int64_t age, std::uint32_t thread, std::string_view text) {
    LineBuffer line;
    const std::size_t length = helpers::FormatLine(line, age, thread, text);
    EXPECT_EQ(line[length], '\0');
    return std::string(line, length);
}

TEST(LineFormatter, LineHasItsForm) {
    EXPECT_EQ(Line(0, 7, "text\n"), "000000:000 [    7] text\n");
    EXPECT_EQ(Line(12'345'678'901, 123456, "text"), "001234:567 [123456] text\n");
    EXPECT_EQ(Line(99'999'990'000'000'000, 12345, ""), "9999999000:000 [12345] \n");
}

TEST(LineFormatter, AgeIsNeverNegative) {
    EXPECT_EQ(Line(-5, 1, "t"), "000000:000 [    1] t\n");
}

TEST(LineFormatter, LongestLineFits) {
    const std::size_t room = helpers::kLongestLine - std::string("000000:000 [    1] ").size();
    EXPECT_EQ(Line(0, 1, std::string(room - 1, 'x')).size(), helpers::kLongestLine);
    EXPECT_EQ(Line(0, 1, std::string(room - 1, 'x') + "\n").size(), helpers::kLongestLine);
}

TEST(LineFormatterDeathTest, LongerLineEndsTheProcess) {
    const std::size_t room = helpers::kLongestLine - std::string("000000:000 [    1] ").size();
    const std::string text(room, 'x');
    EXPECT_DEATH_IF_SUPPORTED(Line(0, 1, text), "");
}

TEST(LineFormatter, NoMessageReachesTheFatalLength) {
    for (const wchar_t character : {L'x', L'\u00e9', L'\u20ac', static_cast<wchar_t>(0xD83D)}) {
        test_tracer::TestTracer test;
        test.Write(std::wstring(3000, character));
        test.writer->Finish();
        const std::string& text = test.sink.text;
        ASSERT_FALSE(text.empty());
        EXPECT_LE(text.size(), helpers::kLongestLine + 1);
        EXPECT_EQ(text.back(), '\n');
    }
}

TEST(LineFormatter, CutTextEndsWithAWholeCharacter) {
    test_tracer::TestTracer test;
    test.Write(platform::FromUtf16(u"x" + std::u16string(2047, u'\u20ac')));
    test.writer->Finish();
    const std::string line = test.sink.Lines().at(0);
    const std::string euro = platform::ToNarrow(L"\u20ac", platform::CodePage::kAnsi);
    EXPECT_EQ((line.size() - 1) % euro.size(), 0u);
    EXPECT_EQ(line.substr(line.size() - euro.size()), euro);
}

}  // namespace
