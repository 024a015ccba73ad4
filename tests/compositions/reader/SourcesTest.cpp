#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/reader/ReadScript.h"

using compositions::MediaItem;
using compositions::UpperName;
using testing::ElementsAre;
using testing::Pair;

namespace {

const char* const kRegs = "NAME = \"n\" CATEGORY = \"c\" %Media% = REGS : {\"key\", \"value\"}";

auto SourcesOf(const char* statements) {
    return ReadScript(ScriptParts{.setup = kRegs, .sources = statements});
}

TEST(Sources, ReadsEveryStatementForm) {
    const auto script = SourcesOf(
        "First = 3 Src = INPUT Logo = BITMAP : \"Logo.png\" Clip = MOVIE : \"a\" + \"b\"");
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_THAT(script->GetNumberedInputs(), ElementsAre(Pair(UpperName(L"first"), 3)));
    EXPECT_THAT(Written(script->GetInputs()), ElementsAre(L"SRC"));
    ASSERT_EQ(script->GetMediaSources().size(), 2u);
    const auto& logo = script->GetMediaSources().at(UpperName(L"logo"));
    EXPECT_EQ(logo.kind, 0u);
    EXPECT_THAT(logo.items, ElementsAre(MediaItem{false, L"Logo.png"}));
    const auto& clip = script->GetMediaSources().at(UpperName(L"CLIP"));
    EXPECT_EQ(clip.kind, 1u);
    EXPECT_THAT(clip.items, ElementsAre(MediaItem{false, L"A"}, MediaItem{false, L"B"}));
}

TEST(Sources, MissingHeaderIsStatus4AndKeepsSetup) {
    const auto script = ReadScript(ScriptParts{.sources = nullptr, .effects = "E = \"e\""});
    EXPECT_EQ(script->GetReadStatus(), 4);
    EXPECT_EQ(script->GetName(), L"n");
    EXPECT_TRUE(script->GetEffectInstances().empty());
}

TEST(Sources, NoStatementsAreAccepted) {
    const auto script = SourcesOf("");
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_TRUE(script->GetInputs().empty());
    EXPECT_TRUE(script->GetNumberedInputs().empty());
    EXPECT_TRUE(script->GetMediaSources().empty());
}

TEST(Sources, InputWrittenTwiceIsKeptTwice) {
    EXPECT_THAT(Written(SourcesOf("a = INPUT B = input A = INPUT")->GetInputs()),
                ElementsAre(L"A", L"B", L"A"));
}

TEST(Sources, LaterNumberReplacesTheEarlier) {
    EXPECT_THAT(SourcesOf("In = 1 IN = -2")->GetNumberedInputs(),
                ElementsAre(Pair(UpperName(L"IN"), -2)));
}

TEST(Sources, PartsOfALongPathAreUpperCasedAndLookedUp) {
    const auto script = SourcesOf("Clip = MOVIE : %media% + \"clip.avi\" + \"Media\"");
    EXPECT_THAT(script->GetMediaSources().at(UpperName(L"CLIP")).items,
                ElementsAre(MediaItem{true, L"MEDIA"}, MediaItem{false, L"CLIP.AVI"},
                            MediaItem{true, L"MEDIA"}));
}

TEST(Sources, PathOfOnePartIsNeverAVariable) {
    const auto script = SourcesOf("A = BITMAP : %Media% B = BITMAP : \"Media\"");
    EXPECT_THAT(script->GetMediaSources().at(UpperName(L"A")).items,
                ElementsAre(MediaItem{false, L"Media"}));
    EXPECT_THAT(script->GetMediaSources().at(UpperName(L"B")).items,
                ElementsAre(MediaItem{false, L"Media"}));
}

TEST(Sources, LaterMediaSourceReplacesKindAndItems) {
    const auto script = SourcesOf("A = BITMAP : \"x\" + \"y\" a = MOVIE : \"z\"");
    ASSERT_EQ(script->GetMediaSources().size(), 1u);
    const auto& media = script->GetMediaSources().at(UpperName(L"A"));
    EXPECT_EQ(media.kind, 1u);
    EXPECT_THAT(media.items, ElementsAre(MediaItem{false, L"z"}));
}

TEST(Sources, APathThatEndsInAPlusEndsTheSectionBehindItsLastPart) {
    const auto script = SourcesOf("A = BITMAP : \"x\" + B = INPUT");
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_THAT(script->GetMediaSources().at(UpperName(L"A")).items,
                ElementsAre(MediaItem{false, L"x"}));
    EXPECT_TRUE(script->GetInputs().empty());
}

TEST(Sources, EmptyPathPartIsKept) {
    EXPECT_THAT(SourcesOf("A = BITMAP : \"\"")->GetMediaSources().at(UpperName(L"A")).items,
                ElementsAre(MediaItem{false, L""}));
}

TEST(Sources, NamesOfAllSortsMayRepeatEachOther) {
    const auto script = SourcesOf("A = 1 A = INPUT A = BITMAP : \"x\"");
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_EQ(script->GetInputs().size(), 1u);
    EXPECT_EQ(script->GetNumberedInputs().size(), 1u);
    EXPECT_EQ(script->GetMediaSources().size(), 1u);
}

TEST(Sources, AnotherFormEndsTheSection) {
    const auto script = SourcesOf("A = INPUT B = OUTPUT C = INPUT");
    EXPECT_THAT(Written(script->GetInputs()), ElementsAre(L"A"));
    EXPECT_EQ(script->GetReadStatus(), 0);
}

TEST(Sources, TheInputsOfAFilterAreCountedWhenAllElseWasRead) {
    ScriptParts parts{.setup = "NAME = \"n\" CATEGORY = \"c\" IS_FILTER = TRUE",
                      .properties = "\"p\" = 1",
                      .timeline = "E.\"q\" = 1"};
    const auto script = ReadScript(parts);
    EXPECT_EQ(script->GetReadStatus(), 20);
    EXPECT_EQ(script->GetProperties().size(), 1u);
    EXPECT_EQ(script->GetTimelineEntries().size(), 1u);
    parts.structure = "OUTPUT = Nobody";
    EXPECT_EQ(ReadScript(parts)->GetReadStatus(), 8);
    parts.structure = "";
    EXPECT_EQ(ReadScript(parts)->GetReadStatus(), 7);
    parts.structure = nullptr;
    EXPECT_EQ(ReadScript(parts)->GetReadStatus(), 6);
}

TEST(Sources, FilterNeedsExactlyOneInputOfEitherSort) {
    const char* setup = "NAME = \"n\" CATEGORY = \"c\" IS_FILTER = TRUE";
    const auto status = [&](const char* sources) {
        return ReadScript(ScriptParts{.setup = setup, .sources = sources})->GetReadStatus();
    };
    EXPECT_EQ(status("A = INPUT"), 0);
    EXPECT_EQ(status("A = 0"), 0);
    EXPECT_EQ(status("A = INPUT B = INPUT"), 20);
    EXPECT_EQ(status("A = INPUT B = 0"), 20);
    EXPECT_EQ(status("A = 0 B = 0"), 20);
    EXPECT_EQ(status(""), 20);
    EXPECT_EQ(status("A = INPUT A = INPUT"), 20);
    EXPECT_EQ(status("A = 0 A = 1"), 0);
    const auto two = ReadScript(ScriptParts{.setup = setup, .sources = "A = INPUT B = INPUT"});
    EXPECT_THAT(Written(two->GetInputs()), ElementsAre(L"A", L"B"));
}

TEST(Effects, ReadsInstancesAndMixes) {
    const auto script =
        ReadScript(ScriptParts{.effects = "Blur1 = \"Blur\\Video\" M1 = MIX m2 = mix"});
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_THAT(script->GetEffectInstances(),
                ElementsAre(Pair(UpperName(L"BLUR1"), L"Blur\\Video")));
    EXPECT_THAT(Written(script->GetMixes()), ElementsAre(L"M1", L"M2", L"MIX2"));
}

TEST(Effects, MissingHeaderIsStatus5AndKeepsSources) {
    const auto script = ReadScript(ScriptParts{.sources = "A = INPUT", .effects = nullptr});
    EXPECT_EQ(script->GetReadStatus(), 5);
    EXPECT_EQ(script->GetInputs().size(), 1u);
    EXPECT_TRUE(script->GetMixes().empty());
}

TEST(Effects, LaterInstanceOfTheSameNameReplacesTheEffect) {
    const auto script = ReadScript(ScriptParts{.effects = "e = \"one\" E = \"two\""});
    EXPECT_THAT(script->GetEffectInstances(), ElementsAre(Pair(UpperName(L"E"), L"two")));
}

TEST(Effects, AQuotedMixIsAMixToo) {
    const auto script = ReadScript(ScriptParts{.effects = "A = \"mix\" A = MIX B = \"\""});
    EXPECT_THAT(Written(script->GetMixes()), ElementsAre(L"A", L"A", L"MIX2"));
    EXPECT_THAT(script->GetEffectInstances(), ElementsAre(Pair(UpperName(L"B"), L"")));
}

TEST(Effects, AnotherWordEndsTheSection) {
    const auto script = ReadScript(ScriptParts{.effects = "A = MIX B = BLUR C = MIX"});
    EXPECT_THAT(Written(script->GetMixes()), ElementsAre(L"A", L"MIX1"));
}

}  // namespace
