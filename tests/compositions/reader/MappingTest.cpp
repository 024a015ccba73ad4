#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/reader/ReadScript.h"

using compositions::Mapping;
using compositions::Section;
using compositions::UpperName;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct MappingsResult {
    std::vector<std::wstring> mappings;  // property flags instance.target
    int status;
    int readStatus;
};

MappingsResult MappingsOf(const char* statements) {
    const auto script =
        ReadScript(ScriptParts{.effects = "E1 = \"e\" E2 = \"e\" M = MIX", .mapping = statements});
    MappingsResult result{
        {}, script->GetSectionStatuses()[Section::kMapping], script->GetReadStatus()};
    for (const Mapping& mapping : script->GetMappings()) {
        result.mappings.push_back(
            std::wstring(mapping.property.View()) + L" " + std::to_wstring(mapping.access) + L" " +
            std::wstring(mapping.instance.View()) + L"." + std::wstring(mapping.targetProperty));
    }
    return result;
}

TEST(MappingSection, TargetsAreAppendedFromTheLastToTheFirst) {
    const MappingsResult result =
        MappingsOf("WRITE \"Amount\" = e1.\"Gain\", E2.\"Level\", E1.\"Mask\"");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.mappings,
                ElementsAre(L"AMOUNT 3 E1.Mask", L"AMOUNT 3 E2.Level", L"AMOUNT 3 E1.Gain"));
}

TEST(MappingSection, MissingHeaderIsStatus9AndIgnored) {
    const auto script = ReadScript(ScriptParts{});
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_EQ(script->GetSectionStatuses()[Section::kMapping], 9);
}

TEST(MappingSection, AHeaderWithoutStatementsIsAccepted) {
    const MappingsResult result = MappingsOf("");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.mappings, IsEmpty());
}

TEST(MappingSection, FlagsStartAtReadAndOtherWordsMeanNothing) {
    EXPECT_THAT(MappingsOf("\"A\" = E1.\"x\"").mappings, ElementsAre(L"A 1 E1.x"));
    EXPECT_THAT(MappingsOf("Sticky WRITE very ENVELOPED \"A\" = E1.\"x\"").mappings,
                ElementsAre(L"A 11 E1.x"));
}

TEST(MappingSection, TheNameIsTheNameEvenIfItReadsAsAnAccessWord) {
    EXPECT_THAT(MappingsOf("\"write\" = E1.\"x\"").mappings, ElementsAre(L"WRITE 1 E1.x"));
}

TEST(MappingSection, WordsAndTargetsOfAnyNumberAreToldApart) {
    EXPECT_THAT(MappingsOf("a b c \"N\" = E1.\"x\"").mappings, ElementsAre(L"N 1 E1.x"));
    EXPECT_THAT(MappingsOf("\"N\" = E1.\"x\", E2.\"y\"").mappings,
                ElementsAre(L"N 1 E2.y", L"N 1 E1.x"));
}

TEST(MappingSection, BlanksOfEverySortBeforeANameAreNoneOfIt) {
    for (const char* blanks : {" ", "\t", "\n", "\r\n", " \t\n "}) {
        const std::string statement = "WRITE \"" + std::string(blanks) + "Strength\" = E1.\"x\"";
        EXPECT_THAT(MappingsOf(statement.c_str()).mappings, ElementsAre(L"STRENGTH 3 E1.x"));
    }
}

TEST(MappingSection, RefusedAccessWordsEndTheSection) {
    const MappingsResult ten =
        MappingsOf("\"A\" = E1.\"x\" ENVELOPED EXPENSIVE \"B\" = E1.\"y\" \"C\" = E1.\"z\"");
    EXPECT_EQ(ten.status, 10);
    EXPECT_EQ(ten.readStatus, 0);
    EXPECT_THAT(ten.mappings, ElementsAre(L"A 1 E1.x"));
    const MappingsResult eleven = MappingsOf("EXPENSIVE ENVELOPED \"B\" = E1.\"y\"");
    EXPECT_EQ(eleven.status, 11);
    EXPECT_THAT(eleven.mappings, IsEmpty());
}

TEST(MappingSection, AccessWordsAreLookedAtBeforeTargets) {
    EXPECT_EQ(MappingsOf("ENVELOPED EXPENSIVE \"A\" = Nobody.\"x\"").status, 10);
}

TEST(MappingSection, UnknownInstanceIsStatus13AndKeepsWhatCameBefore) {
    const MappingsResult result =
        MappingsOf("\"A\" = E1.\"x\", M.\"y\", E2.\"z\" \"B\" = E1.\"b\"");
    EXPECT_EQ(result.status, 13);
    EXPECT_EQ(result.readStatus, 0);
    EXPECT_THAT(result.mappings, ElementsAre(L"A 1 E2.z"));
}

TEST(MappingSection, TheSameTargetTwiceForOnePropertyIsStatus14) {
    const MappingsResult result =
        MappingsOf("\"A\" = E1.\"x\" WRITE \"a\" = E2.\"y\", e1.\"x\" \"B\" = E1.\"b\"");
    EXPECT_EQ(result.status, 14);
    EXPECT_EQ(result.readStatus, 0);
    EXPECT_THAT(result.mappings, ElementsAre(L"A 1 E1.x"));
}

TEST(MappingSection, EqualityLooksAtTheTargetPropertysCaseAndAtTheProperty) {
    const MappingsResult result = MappingsOf("\"A\" = E1.\"x\", E1.\"X\" \"B\" = E1.\"x\"");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.mappings.size(), 3u);
}

TEST(MappingSection, EqualRecordsAreFoundAmongThousands) {
    std::string text = TextOf({.effects = "E = \"e\"", .mapping = ""});
    for (int i = 0; i < 3000; ++i) text += "\"P\" = E.\"p" + std::to_string(i) + "\"\n";
    EXPECT_EQ(ReadScript(text)->GetMappings().size(), 3000u);
    const auto twice = ReadScript(text + "\"p\" = e.\"p77\"");
    EXPECT_EQ(twice->GetSectionStatuses()[Section::kMapping], 14);
}

// Few targets are looked through, many are indexed.
TEST(MappingSection, ATargetIsFoundTwiceHoweverManyStandBefore) {
    constexpr int kTargets = 20;
    for (int again = 0; again < kTargets; ++again) {
        for (int before = again + 1; before <= kTargets; ++before) {
            std::string statements;
            for (int i = 0; i < before; ++i) {
                statements += "\"A\" = E1.\"x" + std::to_string(i) + "\"\n";
            }
            const MappingsResult once = MappingsOf(statements.c_str());
            ASSERT_EQ(once.status, 0) << before;
            ASSERT_EQ(once.mappings.size(), static_cast<std::size_t>(before));
            statements += "\"a\" = e1.\"x" + std::to_string(again) + "\"\n\"B\" = E1.\"y\"\n";
            const MappingsResult twice = MappingsOf(statements.c_str());
            ASSERT_EQ(twice.status, 14) << again << " of " << before;
            ASSERT_EQ(twice.mappings, once.mappings);
        }
    }
}

}  // namespace
