#include "compositions/WideText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>

using compositions::NumberText;
using compositions::WideText;

namespace {

constexpr std::size_t kLengths = 2 * WideText::kLongestInPlace + 4;

std::wstring Alphabet(std::size_t length, wchar_t first = L'a') {
    std::wstring text(length, first);
    for (std::size_t i = 0; i < length; ++i) text[i] = static_cast<wchar_t>(first + i % 90);
    return text;
}

template <class Text>
void ExpectText(const Text& text, const std::wstring& expected) {
    ASSERT_EQ(text.size(), expected.size());
    ASSERT_EQ(text.empty(), expected.empty());
    ASSERT_EQ(std::wstring_view(text), expected);
    ASSERT_EQ(std::wstring(text), expected);
    ASSERT_EQ(text.data()[text.size()], L'\0');
    ASSERT_TRUE(text == expected);
}

}  // namespace

template <class Text>
class WideTexts : public testing::Test {};
using WideTextTypes = testing::Types<NumberText, WideText>;
TYPED_TEST_SUITE(WideTexts, WideTextTypes);

TYPED_TEST(WideTexts, HoldsACopyOfAnyLength) {
    for (std::size_t length = 0; length < kLengths; ++length) {
        std::wstring characters = Alphabet(length);
        const TypeParam text(characters);
        characters.assign(length, L'?');
        ExpectText(text, Alphabet(length));
    }
}

TYPED_TEST(WideTexts, ReadsNothingBehindTheCharacters) {
    for (std::size_t length = 0; length < kLengths; ++length) {
        const std::wstring exact = Alphabet(length);
        // Of its own size: whoever reads on is caught by the address sanitizer.
        const std::unique_ptr<wchar_t[]> characters(new wchar_t[length]);
        exact.copy(characters.get(), length);
        ExpectText(TypeParam(std::wstring_view(characters.get(), length)), exact);
    }
}

TYPED_TEST(WideTexts, KeepsZeros) {
    const std::wstring characters(L"a\0b\0", 4);
    ExpectText(TypeParam(characters), characters);
}

TYPED_TEST(WideTexts, ShortOnesMoveWithTheirText) {
    const TypeParam text(Alphabet(TypeParam::kLongestInPlace));
    const auto* const begin = reinterpret_cast<const char*>(&text);
    const auto* const characters = reinterpret_cast<const char*>(text.data());
    EXPECT_TRUE(characters >= begin && characters < begin + sizeof text);
}

TYPED_TEST(WideTexts, TextsOfAnyLengthTakeEachOthersPlace) {
    for (std::size_t from = 0; from < kLengths; ++from) {
        for (std::size_t to = 0; to < kLengths; ++to) {
            const TypeParam source(Alphabet(from));
            TypeParam copied(Alphabet(to, L'A'));
            copied = source;
            ExpectText(copied, Alphabet(from));
            TypeParam moved(Alphabet(to, L'A'));
            moved = std::move(copied);
            ExpectText(moved, Alphabet(from));
            ExpectText(copied, L"");  // NOLINT: the state behind a move is promised empty
            copied = moved;
            ExpectText(copied, Alphabet(from));
            ExpectText(source, Alphabet(from));
        }
    }
}

TYPED_TEST(WideTexts, CharactersOfAnyLengthTakeTheirPlace) {
    for (std::size_t from = 0; from < kLengths; ++from) {
        for (std::size_t to = 0; to < kLengths; ++to) {
            TypeParam assigned(Alphabet(to, L'A'));
            assigned = std::wstring_view(Alphabet(from));
            ExpectText(assigned, Alphabet(from));
            TypeParam renewed(Alphabet(to, L'A'));
            wchar_t* const characters = renewed.Renew(from);
            ASSERT_EQ(characters, renewed.data());
            Alphabet(from).copy(characters, from);
            ExpectText(renewed, Alphabet(from));
        }
    }
}

TYPED_TEST(WideTexts, CanBeAssignedSomeOfItsOwnCharacters) {
    for (std::size_t length = 0; length < kLengths; ++length) {
        for (std::size_t begin = 0; begin <= length; ++begin) {
            for (std::size_t count = 0; begin + count <= length; ++count) {
                TypeParam text(Alphabet(length));
                text = std::wstring_view(text).substr(begin, count);
                ExpectText(text, Alphabet(length).substr(begin, count));
            }
        }
    }
}

TYPED_TEST(WideTexts, CanBeAssignedToItself) {
    for (const std::size_t length : {std::size_t{0}, std::size_t{3}, kLengths}) {
        TypeParam text(Alphabet(length));
        TypeParam& itself = text;
        text = itself;
        ExpectText(text, Alphabet(length));
        text = std::move(itself);
        ExpectText(text, Alphabet(length));
    }
}

TYPED_TEST(WideTexts, IsCutToAnyLength) {
    for (std::size_t from = 0; from < kLengths; ++from) {
        for (std::size_t to = 0; to <= from; ++to) {
            TypeParam text(Alphabet(from));
            text.CutTo(to);
            ExpectText(text, Alphabet(to));
            const TypeParam moved(std::move(text));
            ExpectText(moved, Alphabet(to));
        }
    }
}

TYPED_TEST(WideTexts, IsWrittenInPlace) {
    for (std::size_t length = 0; length < kLengths; ++length) {
        TypeParam text = TypeParam::OfSize(length);
        Alphabet(length).copy(text.data(), length);
        ExpectText(text, Alphabet(length));
    }
}

TYPED_TEST(WideTexts, EqualsOnlyTheSameCharacters) {
    for (std::size_t length = 1; length < kLengths; ++length) {
        const TypeParam text(Alphabet(length));
        EXPECT_EQ(text, TypeParam(Alphabet(length)));
        EXPECT_NE(text, TypeParam(Alphabet(length + 1)));
        EXPECT_NE(text, TypeParam(Alphabet(length - 1)));
        for (std::size_t changed = 0; changed < length; ++changed) {
            std::wstring other = Alphabet(length);
            other[changed] = L'?';
            EXPECT_NE(text, TypeParam(other)) << length << ' ' << changed;
        }
    }
    EXPECT_EQ(TypeParam(), L"");
    EXPECT_NE(TypeParam(), TypeParam(std::wstring_view(L"\0", 1)));
}
