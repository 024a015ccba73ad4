#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/reader/ReadScript.h"
#include "helpers/report/CapturedOutput.h"

using compositions::Section;
using compositions::TimelineEntry;
using compositions::TimelineEvent;
using compositions::UpperName;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

auto ReadTimeline(const char* statements, const char* mapping = nullptr) {
    return ReadScript(ScriptParts{.effects = "E1 = \"e\" E2 = \"e\"",
                                  .mapping = mapping,
                                  .envelopes = "Fade = {1}, {0, HOLD}",
                                  .timeline = statements});
}

int TimelineStatus(const compositions::CompositionScript& script) {
    EXPECT_EQ(script.GetReadStatus(), 0);
    return script.GetSectionStatuses()[Section::kTimeline];
}

TimelineEntry Entry(const wchar_t* instance, const wchar_t* property, const wchar_t* value,
                    std::uint32_t kind) {
    return {UpperName(instance), property, value, kind};
}

TimelineEvent Event(const wchar_t* instance, const wchar_t* property) {
    return {UpperName(instance), property, UpperName(L"FADE")};
}

TEST(Timeline, ReadsEveryFormOfValue) {
    const auto script = ReadTimeline(
        "E1.\"num\" = -1.5 E1.\"int\" = 7 e1.\"text\" = \"A text\" E1.\"var\" = %Folder% "
        "e2.\"curve\" = fade");
    EXPECT_EQ(TimelineStatus(*script), 0);
    EXPECT_THAT(
        script->GetTimelineEntries(),
        ElementsAre(Entry(L"E1", L"NUM", L"-1.5", 0), Entry(L"E1", L"INT", L"7", 0),
                    Entry(L"E1", L"TEXT", L"A text", 1), Entry(L"E1", L"VAR", L"Folder", 2)));
    EXPECT_THAT(script->GetTimelineEvents(), ElementsAre(Event(L"E2", L"CURVE")));
}

TEST(Timeline, MissingHeaderIsStatus18AndIgnored) {
    EXPECT_EQ(TimelineStatus(*ReadScript(ScriptParts{})), 18);
}

TEST(Timeline, AHeaderWithoutStatementsIsAccepted) {
    EXPECT_EQ(TimelineStatus(*ReadTimeline("")), 0);
}

TEST(Timeline, SeveralTargetsShareTheValueInTheirOrder) {
    const auto script = ReadTimeline("E2.\"b\", E1.\"a\" = \"v\" E1.\"x\", E2.\"y\" = Fade");
    EXPECT_THAT(script->GetTimelineEntries(),
                ElementsAre(Entry(L"E2", L"B", L"v", 1), Entry(L"E1", L"A", L"v", 1)));
    EXPECT_THAT(script->GetTimelineEvents(), ElementsAre(Event(L"E1", L"X"), Event(L"E2", L"Y")));
}

TEST(Timeline, UnknownEnvelopeIsStatus12AndEndsTheSection) {
    const auto script = ReadTimeline("E1.\"a\" = 1 E1.\"b\" = Nobody E1.\"c\" = 2");
    EXPECT_EQ(TimelineStatus(*script), 12);
    EXPECT_THAT(script->GetTimelineEntries(), ElementsAre(Entry(L"E1", L"A", L"1", 0)));
    EXPECT_EQ(TimelineStatus(*ReadTimeline("E1.\"b\" = TRUE")), 12);
}

TEST(Timeline, AMappedTargetCannotCarryAnEnvelope) {
    const auto script = ReadTimeline("E1.\"a\" = Fade E2.\"x\", E1.\"GAIN\" = Fade E1.\"z\" = 1",
                                     "\"P\" = E1.\"Gain\"");
    EXPECT_EQ(TimelineStatus(*script), 19);
    EXPECT_THAT(script->GetTimelineEvents(), ElementsAre(Event(L"E1", L"A")));
    EXPECT_THAT(script->GetTimelineEntries(), IsEmpty());
}

// Few mapped targets are looked through, many are indexed.
TEST(Timeline, AMappedTargetIsFoundHoweverManyThereAre) {
    for (int count = 1; count <= 20; ++count) {
        std::string mapping;
        for (int i = 0; i < count; ++i) mapping += "\"A\" = E1.\"Gain" + std::to_string(i) + "\"\n";
        const auto statusOf = [&](const std::string& target) {
            const std::string timeline = target + " = Fade";
            return TimelineStatus(*ReadTimeline(timeline.c_str(), mapping.c_str()));
        };
        for (int mapped = 0; mapped <= count; ++mapped) {
            const std::string property = "gAIN" + std::to_string(mapped);
            ASSERT_EQ(statusOf("E1.\"" + property + "\""), mapped < count ? 19 : 0)
                << mapped << " of " << count;
            ASSERT_EQ(statusOf("E2.\"" + property + "\""), 0) << "of another instance";
        }
    }
}

TEST(Timeline, AMappedTargetMayHaveAValue) {
    const auto script = ReadTimeline("E1.\"gain\" = 1", "\"P\" = E1.\"Gain\"");
    EXPECT_EQ(TimelineStatus(*script), 0);
    EXPECT_EQ(script->GetTimelineEntries().size(), 1u);
}

TEST(Timeline, AFaultAmongSeveralTargetsKeepsNoneOfThem) {
    const auto script = ReadTimeline("E1.\"a\" = Fade E1.\"b\", E2.\"c\" = Nobody");
    EXPECT_EQ(TimelineStatus(*script), 12);
    EXPECT_THAT(script->GetTimelineEvents(), ElementsAre(Event(L"E1", L"A")));
}

TEST(Timeline, TheEnvelopeIsLookedUpBeforeTheMappings) {
    EXPECT_EQ(TimelineStatus(*ReadTimeline("E1.\"gain\" = Nobody", "\"P\" = E1.\"Gain\"")), 12);
}

TEST(Timeline, UndeclaredInstancesAreKept) {
    EXPECT_THAT(ReadTimeline("Nobody.\"a\" = 1")->GetTimelineEntries(),
                ElementsAre(Entry(L"NOBODY", L"A", L"1", 0)));
}

TEST(Timeline, AValueOfNoKnownFormAddsNothing) {
    const auto script = ReadTimeline("E1.\"a\" = 1 E1.\"b\", E2.\"c\" = {5}");
    EXPECT_EQ(TimelineStatus(*script), 0);
    EXPECT_EQ(script->GetTimelineEntries().size(), 1u);
    EXPECT_THAT(script->GetTimelineEvents(), IsEmpty());
}

TEST(Timeline, EmptyTextIsAValue) {
    EXPECT_THAT(ReadTimeline("E1.\"a\" = \"\"")->GetTimelineEntries(),
                ElementsAre(Entry(L"E1", L"A", L"", 1)));
}

TEST(Timeline, EnvelopesDroppedByTheirSectionAreUnknownHere) {
    const auto script =
        ReadScript(ScriptParts{.envelopes = "A = {1}, {0, SPLINE}", .timeline = "E.\"p\" = A"});
    EXPECT_EQ(script->GetSectionStatuses()[Section::kEnvelopes], 17);
    EXPECT_EQ(TimelineStatus(*script), 12);
}

}  // namespace
