#include "frame/Text.h"

#include <gtest/gtest.h>

#include "frame/Suggest.h"
#include "probe/Findings.h"

namespace {

using namespace tarnexctl;

TEST(Text, ValidUtf8IsLeftAloneAndEveryOtherByteIsReplaced) {
    const std::string valid = "a\xC3\xA4\xE6\xBC\xA2\xF0\x9F\x98\x80";
    EXPECT_TRUE(IsValidUtf8(valid));
    EXPECT_EQ(ValidUtf8(valid), valid);
    for (const std::string bad : {"\x80", "\xC0\xAF", "\xC3", "\xE0\x80\xAF", "\xED\xA0\x80",
                                  "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xE6\xBC"}) {
        EXPECT_FALSE(IsValidUtf8(bad));
        EXPECT_TRUE(IsValidUtf8(ValidUtf8("x" + bad + "y")));
        EXPECT_EQ(ValidUtf8("x" + bad + "y").back(), 'y');
    }
}

TEST(Text, ControlCharactersAreShownAsEscapes) {
    EXPECT_EQ(Printable("a\tb\r\n\x1B[1m\x7F"), "a\\tb\\r\\n\\x1B[1m\\x7F");
    EXPECT_EQ(DisplayWidth("\xC3\xA4\xE6\xBC\xA2x"), 3u);
}

TEST(Suggest, NearestNameIsFoundAndFarOnesAreNot) {
    EXPECT_EQ(Suggest("lsit", {"log", "list"}), "list");
    EXPECT_EQ(Suggest("BLUR", {"Glow", "Blur"}), "Blur");
    EXPECT_EQ(Suggest("zebra", {"log", "list"}), std::nullopt);
    EXPECT_EQ(EditDistance("abcd", "abdc"), 1u);
    EXPECT_EQ(EditDistance("", "abc"), 3u);
}

TEST(Findings, CodesAreUniqueAndInOrder) {
    std::string before;
    for (const FindingKind& kind : FindingKinds()) {
        const std::string code = kind.code;
        const bool sameGroup = !before.empty() && before[0] == code[0];
        EXPECT_TRUE(!sameGroup || before < code) << code;
        EXPECT_EQ(FindFindingKind(code), &kind);
        EXPECT_STRNE(kind.title, "");
        EXPECT_STRNE(kind.remedy, "");
        before = code;
    }
    EXPECT_EQ(FindFindingKind("P000"), nullptr);
}

}  // namespace
