#include "platform/CodePage.h"

#include <gtest/gtest.h>

namespace {

using platform::CodePage;

TEST(WideToNarrow, ModesChooseTheCodePage) {
    EXPECT_EQ(platform::WideToNarrow(L"\u00e9", 2), "\xc3\xa9");
    EXPECT_EQ(platform::WideToNarrow(L"abc", 1), "abc");
    EXPECT_EQ(platform::WideToNarrow(L"abc", 3), "");
    for (const unsigned other : {0u, 4u, 77u}) {
        EXPECT_EQ(platform::WideToNarrow(L"\u00e9", other), platform::WideToNarrow(L"\u00e9", 1));
    }
}

TEST(WideToNarrow, EmptyGivesEmptyInEveryMode) {
    for (const unsigned mode : {0u, 1u, 2u, 3u, 4u}) {
        EXPECT_EQ(platform::WideToNarrow(L"", mode), "");
    }
}

TEST(CodePage, Utf8GoesBothWays) {
    const std::string text = "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80z";
    EXPECT_EQ(platform::ToNarrow(platform::ToWide(text, CodePage::kUtf8), CodePage::kUtf8), text);
}

TEST(CodePage, BrokenUtf8IsReplacedAndNeverFails) {
    for (const char* text : {"\xff", "\xc3", "\xe2\x82", "\xc0\x80", "\xed\xa0\x80", "\xf5zzz"}) {
        EXPECT_FALSE(platform::ToWide(text, CodePage::kUtf8).empty()) << text;
    }
}

TEST(CodePage, HalfAPairIsReplaced) {
    const std::wstring half(1, static_cast<wchar_t>(0xD83D));
    EXPECT_FALSE(platform::ToNarrow(half, CodePage::kUtf8).empty());
    EXPECT_FALSE(platform::ToNarrow(half, CodePage::kAnsi).empty());
}

TEST(CodePage, Utf16KeepsHalvesAndJoinsPairs) {
    const std::u16string units = u"a\U0001F600b";
    const std::wstring wide = platform::FromUtf16(units);
    char16_t back[8];
    ASSERT_EQ(platform::ToUtf16(wide, back, 8), units.size());
    EXPECT_EQ(std::u16string(back, units.size()), units);
    const std::u16string half(1, char16_t{0xD83D});
    EXPECT_EQ(static_cast<unsigned>(platform::FromUtf16(half).at(0)), 0xD83Du);
}

std::string Ansi(const std::u16string& text, std::size_t capacity = 100) {
    char buffer[100];
    return {buffer, platform::Utf16ToAnsi(text.data(), text.size(), buffer, capacity)};
}

std::u16string Utf16(const std::wstring& text, std::size_t capacity = 100) {
    char16_t buffer[100];
    return {buffer, platform::ToUtf16(text, buffer, capacity)};
}

TEST(CodePage, OddCharactersAreConvertedWhereverTheyStand) {
    for (const std::u16string piece : {u"\u00e9", u"\uffff", u"\U0001F600"}) {
        for (std::size_t before = 0; before <= 20; ++before) {
            const std::u16string head(before, u'a');
            const std::u16string tail(20 - before, u'b');
            const std::u16string text = head + piece + tail;
            EXPECT_EQ(Utf16(platform::FromUtf16(text)), text);
            const std::string narrow = Ansi(head) + Ansi(piece) + Ansi(tail);
            EXPECT_EQ(Ansi(text), narrow);
            for (std::size_t capacity = 0; capacity <= narrow.size(); ++capacity) {
                EXPECT_EQ(Utf16(platform::FromUtf16(text), capacity), text.substr(0, capacity));
                EXPECT_TRUE(narrow.starts_with(Ansi(text, capacity)));
            }
        }
    }
}

TEST(CodePage, WideCharactersThatAreNoneAreReplaced) {
    if constexpr (sizeof(wchar_t) > 2) {
        for (std::size_t before = 0; before <= 20; ++before) {
            std::wstring text(20, L'a');
            text.insert(before, 1, static_cast<wchar_t>(-1));
            std::u16string expected(20, u'a');
            expected.insert(before, 1, u'\uFFFD');
            EXPECT_EQ(Utf16(text), expected);
        }
    }
}

TEST(CodePage, Utf16IsCutAtTheCapacity) {
    char16_t units[3];
    EXPECT_EQ(platform::ToUtf16(L"abcdef", units, 3), 3u);
    EXPECT_EQ(std::u16string(units, 3), u"abc");
    EXPECT_EQ(platform::ToUtf16(platform::FromUtf16(u"ab\U0001F600"), units, 3), 3u);
    EXPECT_EQ(static_cast<unsigned>(units[2]), 0xD83Du);
}

TEST(CodePage, AnsiStopsBeforeACharacterThatDoesNotFit) {
    char buffer[8];
    const std::u16string text = u"aaa\u00e9\u00e9";
    const std::size_t whole = platform::Utf16ToAnsi(text.data(), text.size(), buffer, 8);
    const std::size_t character = (whole - 3) / 2;
    EXPECT_EQ(platform::Utf16ToAnsi(text.data(), text.size(), buffer, whole - 1), 3 + character);
    EXPECT_EQ(platform::Utf16ToAnsi(text.data(), text.size(), buffer, 0), 0u);
    EXPECT_EQ(platform::Utf16ToAnsi(text.data(), 0, buffer, 8), 0u);
}

}  // namespace
