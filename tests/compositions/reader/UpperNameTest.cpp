#include "compositions/UpperName.h"

#include <gtest/gtest.h>

#include <clocale>
#include <compare>
#include <map>
#include <string>
#include <utility>
#include <vector>

using compositions::AssignUpper;
using compositions::IsKeyword;
using compositions::UpperName;
using compositions::UpperText;
using compositions::WideText;
using namespace std::string_view_literals;

TEST(UpperName, KeepsACopyInUpperCase) {
    std::wstring token = L"Blur1_x";
    const UpperName name(token);
    token[0] = L'?';
    EXPECT_EQ(name.View(), L"BLUR1_X");
    EXPECT_EQ(name.Length(), 7u);
    EXPECT_EQ(name.Capacity(), 8u);
    EXPECT_EQ(name.Data()[7], L'\0');
}

TEST(UpperName, WithoutCharactersHasNoBuffer) {
    for (const UpperName& name : {UpperName(), UpperName(L""), UpperName(L"\0after"sv)}) {
        EXPECT_EQ(name.Data(), nullptr);
        EXPECT_EQ(name.Capacity(), 0u);
        EXPECT_EQ(name.Length(), 0u);
        EXPECT_TRUE(name.View().empty());
    }
}

TEST(UpperName, WithoutBufferEqualsNoKeywordNotEvenAnEmptyOne) {
    EXPECT_FALSE(UpperName() == L"MIX"sv);
    EXPECT_FALSE(UpperName() == L""sv);
    EXPECT_TRUE(UpperName() == UpperName(L""));
}

TEST(UpperName, EndsAtItsFirstZero) {
    const UpperName name(L"mix\0more"sv);
    EXPECT_TRUE(name == L"MIX"sv);
    EXPECT_EQ(name.Capacity(), 4u);
}

TEST(UpperName, VerbatimChangesNoCase) {
    EXPECT_EQ(UpperName::Verbatim(L"miX\0y"sv).View(), L"miX");
    EXPECT_FALSE(UpperName::Verbatim(L"mix") == UpperName(L"mix"));
}

TEST(UpperName, LeavesCharactersOfWidenedBytesAlone) {
    EXPECT_EQ(UpperName(L"caf\xFFE9z").View(), L"CAF\xFFE9Z");
}

TEST(UpperName, OrdersByUnsignedCodeUnitAndThenByLength) {
    const std::map<UpperName, int> names{{UpperName(L"\xFFE9"), 4},
                                         {UpperName(L"AB"), 2},
                                         {UpperName(L"_"), 3},
                                         {UpperName(L"A"), 1},
                                         {UpperName(), 0}};
    int expected = 0;
    for (const auto& entry : names) EXPECT_EQ(entry.second, expected++);
}

TEST(UpperName, CharactersOfTwoUnitsGoBeforeTheLastOfOne) {
    const std::vector<std::wstring> ordered{L"\xD7FF",     L"\U00010000", L"\U00010000\xFFFF",
                                            L"\U00010001", L"\U0001F3AC", L"\U0010FFFF",
                                            L"\xE000",     L"\xFF80",     L"\xFFFF"};
    for (std::size_t i = 0; i < ordered.size(); ++i) {
        for (std::size_t j = 0; j < ordered.size(); ++j) {
            EXPECT_EQ(UpperName::Verbatim(ordered[i]) <=> UpperName::Verbatim(ordered[j]), i <=> j)
                << i << ' ' << j;
        }
    }
}

TEST(UpperName, CopiesAndMovesItsBuffer) {
    UpperName first(L"one");
    UpperName copy = first;
    EXPECT_NE(copy.Data(), first.Data());
    UpperName moved = std::move(first);
    EXPECT_EQ(moved.View(), L"ONE");
    EXPECT_EQ(first.Capacity(), 0u);  // NOLINT: the state behind a move is promised empty
    copy = UpperName(L"two");
    EXPECT_EQ(copy.View(), L"TWO");
    copy = moved;
    EXPECT_EQ(copy.View(), L"ONE");
    const UpperName& same = copy;
    copy = same;
    EXPECT_EQ(copy.View(), L"ONE");
    copy = UpperName();
    EXPECT_EQ(copy.Data(), nullptr);
}

TEST(UpperName, NamesOfAnyLengthTakeEachOthersPlace) {
    for (std::size_t from = 0; from < 40; ++from) {
        for (std::size_t to = 0; to < 40; ++to) {
            const UpperName source(std::wstring(from, L'a'));
            UpperName name(std::wstring(to, L'b'));
            name = source;
            ASSERT_EQ(name.View(), std::wstring(from, L'A'));
            ASSERT_EQ(name.Capacity(), from == 0 ? 0 : from + 1);
            UpperName other(std::wstring(to, L'c'));
            other = std::move(name);
            ASSERT_EQ(other.View(), std::wstring(from, L'A'));
            UpperName& itself = other;
            other = std::move(itself);
            ASSERT_EQ(other.View(), std::wstring(from, L'A'));
            ASSERT_TRUE(from == 0 || other.Data()[from] == L'\0');
            const UpperName last = std::move(other);
            ASSERT_EQ(last, source);
            ASSERT_EQ(other.Data(), nullptr);  // NOLINT: the state behind a move is promised empty
        }
    }
}

TEST(UpperName, TokensOfAnyLengthTakeItsPlace) {
    for (std::size_t from = 0; from < 40; ++from) {
        for (std::size_t to = 0; to < 40; ++to) {
            UpperName name(std::wstring(to, L'b'));
            name.Assign(std::wstring(from, L'a'));
            ASSERT_EQ(name.View(), std::wstring(from, L'A'));
            ASSERT_EQ(name.Capacity(), from == 0 ? 0 : from + 1);
            name.WriteVerbatim([&](WideText& text) {
                ASSERT_EQ(text, std::wstring(from, L'A'));
                text = std::wstring(to, L'c') + L'\0' + std::wstring(to, L'd');
            });
            ASSERT_EQ(name.View(), std::wstring(to, L'c'));
            ASSERT_TRUE(to == 0 || name.Data()[to] == L'\0');
            WideText upper(std::wstring(to, L'b'));
            AssignUpper(std::wstring(from, L'a'), upper);
            ASSERT_EQ(upper, std::wstring(from, L'A'));
        }
    }
    UpperName name(L"before");
    name.Assign(L"a\0b"sv);
    EXPECT_EQ(name.View(), L"A");
}

// Characters are upper-cased several at a time.
TEST(UpperName, IsTheSameWhereverItsCharactersStand) {
    constexpr std::wstring_view kOdd = L"\0@[`{az\x7F\x80\xE9\xFFE9"sv;
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            for (const wchar_t odd : kOdd) {
                std::wstring token(length, L'm');
                std::wstring upper(length, L'M');
                const bool isLower = odd >= L'a' && odd <= L'z';
                token[at] = odd;
                upper[at] = static_cast<wchar_t>(isLower ? odd - 32 : odd);
                ASSERT_EQ(UpperText(token), upper)
                    << length << ' ' << at << ' ' << static_cast<unsigned>(odd);
                if (odd == 0) upper.resize(at);
                ASSERT_EQ(UpperName(token).View(), upper)
                    << length << ' ' << at << ' ' << static_cast<unsigned>(odd);
            }
        }
    }
}

#ifdef _WIN32
// Where the C runtime's locale knows more letters, they are upper-cased too.
TEST(UpperName, FollowsTheLocale) {
    const std::string before = setlocale(LC_ALL, nullptr);
    if (setlocale(LC_ALL, "English_United States.1252") == nullptr) {
        GTEST_SKIP() << "the system has no such locale";
    }
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            std::wstring token(length, L'm');
            std::wstring upper(length, L'M');
            token[at] = L'\xE9';
            upper[at] = L'\xC9';
            EXPECT_EQ(UpperName(token).View(), upper) << length << ' ' << at;
            token += std::wstring_view(L"\0\xE9", 2);
            upper += std::wstring_view(L"\0\xC9", 2);
            EXPECT_EQ(UpperText(token), upper) << length << ' ' << at;
        }
    }
    setlocale(LC_ALL, before.c_str());
}
#endif

TEST(UpperText, KeepsZerosAndUpperCasesBehindThem) {
    EXPECT_EQ(UpperText(L"a\0b"sv), L"A\0B"sv);
    EXPECT_EQ(UpperText(L"a\xFFE9\0b\0\0c\xFFE9"sv), L"A\xFFE9\0B\0\0C\xFFE9"sv);
    EXPECT_EQ(UpperText(L""), L"");
}

TEST(IsKeyword, AnswersAsTheUpperNameWould) {
    for (const std::wstring_view token : {L"MIX"sv, L"mix"sv, L"MI"sv, L"MIXX"sv, L"mIx\0z"sv,
                                          L"MI\0"sv, L"\0MIX"sv, L""sv, L"M\xFFE9X"sv}) {
        EXPECT_EQ(IsKeyword(token, L"MIX"), UpperName(token) == L"MIX"sv) << token.size();
    }
}
