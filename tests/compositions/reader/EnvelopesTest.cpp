#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/reader/ReadScript.h"

using compositions::Envelope;
using compositions::Section;
using compositions::UpperName;
using testing::ElementsAre;

namespace {

std::shared_ptr<compositions::CompositionScript> ReadScriptOf(const char* statements) {
    return ReadScript(ScriptParts{.envelopes = statements});
}

int StatusOf(const compositions::CompositionScript& script) {
    EXPECT_EQ(script.GetReadStatus(), 0);
    return script.GetSectionStatuses()[Section::kEnvelopes];
}

// Keys as "time value KIND first second".
std::vector<std::wstring> Keys(const char* statement) {
    const auto script = ReadScriptOf(statement);
    EXPECT_EQ(StatusOf(*script), 0);
    std::vector<std::wstring> keys;
    if (script->GetEnvelopes().empty()) return keys;
    for (const auto& key : script->GetEnvelopes().begin()->second.keys) {
        std::wstring& text = keys.emplace_back();
        for (const std::wstring_view part :
             {std::wstring_view(key.time), std::wstring_view(key.value), key.kind.View(),
              std::wstring_view(key.firstParameter), std::wstring_view(key.secondParameter)}) {
            text.append(text.empty() ? L"" : L" ").append(part);
        }
    }
    return keys;
}

TEST(Envelopes, ReadsKeysWithAndWithoutValue) {
    const auto script = ReadScriptOf("Fade = {2}, {0, 0, LINEAR}, {25, HOLD}");
    ASSERT_EQ(script->GetEnvelopes().size(), 1u);
    const Envelope& fade = script->GetEnvelopes().at(UpperName(L"FADE"));
    EXPECT_EQ(fade.count, L"2");
    EXPECT_THAT(
        fade.keys,
        ElementsAre(compositions::EnvelopeKey{L"0", L"0", UpperName(L"LINEAR"), L"0.0", L"0.0"},
                    compositions::EnvelopeKey{L"25", L"1.0", UpperName(L"HOLD"), L"0.0", L"0.0"}));
}

TEST(Envelopes, MissingHeaderIsStatus15AndIgnored) {
    EXPECT_EQ(StatusOf(*ReadScript(ScriptParts{})), 15);
}

TEST(Envelopes, AHeaderWithoutStatementsIsAccepted) {
    EXPECT_EQ(StatusOf(*ReadScriptOf("")), 0);
}

TEST(Envelopes, NumbersAreKeptAsWritten) {
    EXPECT_THAT(Keys("A = {1}, {-1.50, 007, cosine}, {2.25, Cubic}"),
                ElementsAre(L"-1.50 007 COSINE 0.0 0.0", L"2.25 1.0 CUBIC 0.0 0.0"));
    const auto script = ReadScriptOf("A = {2.5}, {1, HOLD}");
    EXPECT_EQ(script->GetEnvelopes().at(UpperName(L"A")).count, L"2.5");
}

TEST(Envelopes, HermiteTakesTheTwoNumbersThatWereWrittenForIt) {
    EXPECT_THAT(Keys("A = {2}, {0, 1, HERMITE, 0.5, -2}, {9, hermite, 3, 4}"),
                ElementsAre(L"0 1 HERMITE 0.5 -2", L"9 1.0 HERMITE 3 4"));
}

TEST(Envelopes, HermiteNeverEatsTheNextKeysNumbers) {
    EXPECT_THAT(
        Keys("A = {3}, {0, 1, HERMITE}, {5, 2, HERMITE}, {9, HERMITE}"),
        ElementsAre(L"0 1 HERMITE 0.0 0.0", L"5 2 HERMITE 0.0 0.0", L"9 1.0 HERMITE 0.0 0.0"));
    EXPECT_THAT(Keys("A = {3}, {0, 1, HERMITE, 7, 8}, {5, 2, HERMITE}, {9, HERMITE, 1, 2}"),
                ElementsAre(L"0 1 HERMITE 7 8", L"5 2 HERMITE 0.0 0.0", L"9 1.0 HERMITE 1 2"));
    EXPECT_THAT(Keys("A = {3}, {0, 1, HERMITE}, {5, 2, HERMITE, 7, 8}, {9, HOLD}"),
                ElementsAre(L"0 1 HERMITE 0.0 0.0", L"5 2 HERMITE 7 8", L"9 1.0 HOLD 0.0 0.0"));
}

TEST(Envelopes, NumbersBehindAnotherKindAreIgnored) {
    EXPECT_THAT(Keys("A = {2}, {0, 1, LINEAR, 5, 6}, {4, 2, HOLD}, {9, HOLD, 7, 8}"),
                ElementsAre(L"0 1 LINEAR 0.0 0.0", L"4 2 HOLD 0.0 0.0", L"9 1.0 HOLD 0.0 0.0"));
}

TEST(Envelopes, AKeyWithoutValueIsTheLastOfItsStatement) {
    const auto script = ReadScriptOf("A = {2}, {0, LINEAR}, {25, 1, HOLD} B = {1}, {0, HOLD}");
    EXPECT_EQ(StatusOf(*script), 0);
    ASSERT_EQ(script->GetEnvelopes().size(), 1u) << "the text behind the key ends the section";
    EXPECT_EQ(script->GetEnvelopes().begin()->second.keys.size(), 1u);
}

TEST(Envelopes, ALastKeyWithAValueIsNoStatement) {
    EXPECT_TRUE(ReadScriptOf("A = {2}, {0, 1, LINEAR}, {25, 1, HOLD}")->GetEnvelopes().empty());
}

TEST(Envelopes, EveryKindIsAcceptedInAnyCaseAndStoredInUpperCase) {
    EXPECT_THAT(Keys("A = {5}, {0,1,linear}, {1,1,Cosine}, {2,1,cUbIc}, {3,1,hermite}, {4,hold}"),
                ElementsAre(L"0 1 LINEAR 0.0 0.0", L"1 1 COSINE 0.0 0.0", L"2 1 CUBIC 0.0 0.0",
                            L"3 1 HERMITE 0.0 0.0", L"4 1.0 HOLD 0.0 0.0"));
}

TEST(Envelopes, TheSameNameTwiceIsStatus14AndTheFirstStays) {
    const auto script =
        ReadScriptOf("Fade = {1}, {0, HOLD} FADE = {2}, {1, HOLD} Other = {1}, {0, HOLD}");
    EXPECT_EQ(StatusOf(*script), 14);
    ASSERT_EQ(script->GetEnvelopes().size(), 1u);
    EXPECT_EQ(script->GetEnvelopes().at(UpperName(L"FADE")).count, L"1");
}

TEST(Envelopes, UnknownKindIsStatus17AndDropsTheEnvelopeAndAllBehindIt) {
    for (const char* bad : {"{0, 1, SPLINE}, {1, HOLD}", "{0, 1, HOLD}, {1, SPLINE}", "{1, SPLINE}",
                            "{1, SPLINE, 2, 3}", "{0, 1, SPLINE, 5, 6}, {1, HOLD}"}) {
        const std::string text =
            std::string("A = {1}, {0, HOLD} B = {1}, ") + bad + " C = {1}, {0, HOLD}";
        const auto script = ReadScriptOf(text.c_str());
        EXPECT_EQ(StatusOf(*script), 17) << bad;
        ASSERT_EQ(script->GetEnvelopes().size(), 1u) << bad;
        EXPECT_EQ(script->GetEnvelopes().count(UpperName(L"A")), 1u) << bad;
    }
}

TEST(Envelopes, TheNameIsCheckedBeforeTheKinds) {
    EXPECT_EQ(StatusOf(*ReadScriptOf("A = {1}, {0, HOLD} a = {1}, {0, SPLINE}")), 14);
}

}  // namespace
