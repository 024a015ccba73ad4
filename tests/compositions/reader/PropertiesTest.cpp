#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/reader/ReadScript.h"

using compositions::PropertyRecord;
using compositions::Section;
using testing::ElementsAre;

namespace {

struct PropertiesResult {
    compositions::Properties properties;
    int status;
    int readStatus;
};

PropertiesResult PropertiesOf(const char* statements) {
    const auto script = ReadScript(ScriptParts{.properties = statements});
    return {script->GetProperties(), script->GetSectionStatuses()[Section::kProperties],
            script->GetReadStatus()};
}

TEST(Properties, EveryFormOfValueIsKeptAsWritten) {
    const PropertiesResult result = PropertiesOf(
        "\"Text\" = \"A text\"\n\"Number\" = -1.50\n\"Integer\" = 7\n\"Yes\" = True\n"
        "\"No\" = FALSE\n\"Empty\" = \"\"");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(
        result.properties,
        ElementsAre(PropertyRecord{1, L"Text", L"\"A text\""},
                    PropertyRecord{1, L"Number", L"-1.50"}, PropertyRecord{1, L"Integer", L"7"},
                    PropertyRecord{1, L"Yes", L"True"}, PropertyRecord{1, L"No", L"FALSE"},
                    PropertyRecord{1, L"Empty", L"\"\""}));
}

TEST(Properties, MissingHeaderIsStatus2AndIgnored) {
    const auto script = ReadScript(ScriptParts{});
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_EQ(script->GetSectionStatuses()[Section::kProperties], 2);
}

TEST(Properties, EachAccessWordSetsItsFlag) {
    const PropertiesResult result = PropertiesOf(
        "READ \"r\" = 1 WRITE \"w\" = 1 EXPENSIVE \"x\" = 1 ENVELOPED \"e\" = 1 "
        "NO_INTERPOLATION \"n\" = 1 read Write no_interpolation EXPENSIVE read \"all\" = 1");
    EXPECT_THAT(result.properties,
                ElementsAre(PropertyRecord{1, L"r", L"1"}, PropertyRecord{3, L"w", L"1"},
                            PropertyRecord{5, L"x", L"1"}, PropertyRecord{11, L"e", L"1"},
                            PropertyRecord{33, L"n", L"1"}, PropertyRecord{39, L"all", L"1"}));
}

TEST(Properties, ExpensiveBehindEnvelopedIsStatus10AndEndsTheSection) {
    const PropertiesResult result =
        PropertiesOf("\"before\" = 1 ENVELOPED EXPENSIVE \"bad\" = 1 \"behind\" = 1");
    EXPECT_EQ(result.status, 10);
    EXPECT_EQ(result.readStatus, 0);
    EXPECT_THAT(result.properties, ElementsAre(PropertyRecord{1, L"before", L"1"}));
}

TEST(Properties, EnvelopedBehindExpensiveIsStatus11AndEndsTheSection) {
    const PropertiesResult result =
        PropertiesOf("EXPENSIVE WRITE ENVELOPED \"bad\" = 1 \"behind\" = 1");
    EXPECT_EQ(result.status, 11);
    EXPECT_EQ(result.readStatus, 0);
    EXPECT_TRUE(result.properties.empty());
}

TEST(Properties, AWordThatIsNoAccessWordTakesTheNamesPlace) {
    EXPECT_THAT(PropertiesOf("WRITE Sticky READ \"Name\" = 1").properties,
                ElementsAre(PropertyRecord{3, L"Sticky", L"READ"}));
    EXPECT_THAT(PropertiesOf("Sticky \"Name\" = 1").properties,
                ElementsAre(PropertyRecord{1, L"Sticky", L"Name"}));
}

TEST(Properties, ANameThatReadsAsAnAccessWordIsOne) {
    EXPECT_THAT(PropertiesOf("READ \"write\" = 5").properties,
                ElementsAre(PropertyRecord{3, L"5", L""}));
    EXPECT_THAT(PropertiesOf("\"WRITE\" = \"text\"").properties,
                ElementsAre(PropertyRecord{3, L"\"text\"", L""}));
    EXPECT_THAT(PropertiesOf("\"WRITE\" = \"\"").properties,
                ElementsAre(PropertyRecord{3, L"\"\"", L""}));
    EXPECT_EQ(PropertiesOf("ENVELOPED \"EXPENSIVE\" = 5").status, 10);
}

TEST(Properties, AnEmptyNameIsAName) {
    EXPECT_THAT(PropertiesOf("WRITE \"\" = 5").properties,
                ElementsAre(PropertyRecord{3, L"", L"5"}));
}

TEST(Properties, ANameMayRepeat) {
    EXPECT_EQ(PropertiesOf("\"a\" = 1 \"a\" = 2").properties.size(), 2u);
}

TEST(Properties, AnotherFormEndsTheSection) {
    const PropertiesResult result = PropertiesOf("\"a\" = 1 \"b\" = %v% \"c\" = 2");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.properties.size(), 1u);
}

TEST(Properties, AHeaderWithoutStatementsIsAccepted) {
    EXPECT_EQ(PropertiesOf("").status, 0);
}

}  // namespace
