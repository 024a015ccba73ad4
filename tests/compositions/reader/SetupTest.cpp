#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/CompScriptSections.h"
#include "compositions/reader/ReadScript.h"
#include "helpers/report/CapturedOutput.h"

using compositions::NumberOf;
using compositions::Section;
using compositions::UpperName;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Setup : public testing::Test {
protected:
    Setup() { captured::TakeTraced(); }

    static auto Read(const char* statements) {
        return ReadScript(ScriptParts{.setup = statements});
    }
};

TEST_F(Setup, ReadsEveryStatementForm) {
    const auto script = Read(
        "NAME = \"Flip\"\nCATEGORY = \"Transitions\"\nSPEED = 2\nIS_FILTER = FALSE\nSWAP = TRUE\n"
        "%Folder% = REGS : {\"key\", \"value\"}\n%Other% = REGS : {\"a\", \"b\", \"c\"}");
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_EQ(script->GetName(), L"Flip");
    EXPECT_EQ(script->GetCategory(), L"Transitions");
    EXPECT_EQ(script->GetSpeed(), 2);
    EXPECT_FALSE(script->IsFilter());
    EXPECT_TRUE(script->GetSwap());
    const auto& values = script->GetRegistryValues();
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values.at(UpperName(L"folder")),
              (compositions::RegistryValue{L"key", L"value", L""}));
    EXPECT_EQ(values.at(UpperName(L"OTHER")), (compositions::RegistryValue{L"a", L"b", L"c"}));
}

TEST_F(Setup, MinimalSetupHasDefaults) {
    const auto script = Read("NAME = \"Flip\" CATEGORY = \"Transitions\"");
    EXPECT_EQ(script->GetSpeed(), 0);
    EXPECT_FALSE(script->IsFilter());
    EXPECT_FALSE(script->GetSwap());
    EXPECT_TRUE(script->GetRegistryValues().empty());
}

TEST_F(Setup, MissingHeaderIsStatus1AndNothingElseIsRead) {
    const auto script = ReadScript(ScriptParts{.setup = nullptr, .sources = "A = INPUT"});
    EXPECT_EQ(script->GetReadStatus(), 1);
    EXPECT_EQ(script->GetName(), L"");
    EXPECT_TRUE(script->GetInputs().empty());
    EXPECT_EQ(script->GetSectionStatuses()[Section::kSetup], 1);
    EXPECT_EQ(script->GetSectionStatuses()[Section::kSources], -1);
}

TEST_F(Setup, WithoutCategoryIsStatus3AndTracesNothing) {
    const auto script = Read("NAME = \"Flip\"");
    EXPECT_EQ(script->GetReadStatus(), 3);
    EXPECT_EQ(script->GetName(), L"Flip");
    EXPECT_THAT(captured::TakeTraced(), IsEmpty());
}

TEST_F(Setup, WhatWasReadBeforeAFailureStays) {
    const auto unnamed = Read("SPEED = 5 SWAP = TRUE IS_FILTER = TRUE %v% = REGS : {\"a\", \"b\"}");
    EXPECT_EQ(unnamed->GetReadStatus(), 3);
    EXPECT_EQ(unnamed->GetSpeed(), 5);
    EXPECT_TRUE(unnamed->GetSwap());
    EXPECT_TRUE(unnamed->IsFilter());
    EXPECT_EQ(unnamed->GetRegistryValues().size(), 1u);
    const auto refused = Read("SPEED = 5 IS_FILTER = TRUE IS_FILTER = maybe SWAP = TRUE");
    EXPECT_EQ(refused->GetReadStatus(), 12);
    EXPECT_EQ(refused->GetSpeed(), 5);
    EXPECT_TRUE(refused->IsFilter());
    EXPECT_FALSE(refused->GetSwap());
}

TEST_F(Setup, WithoutNameIsStatus3) {
    EXPECT_EQ(Read("CATEGORY = \"c\"")->GetReadStatus(), 3);
    EXPECT_EQ(Read("NAME = \"\" CATEGORY = \"c\"")->GetReadStatus(), 3);
    EXPECT_EQ(Read("NAME = \"n\" CATEGORY = \"  \"")->GetReadStatus(), 3);
}

TEST_F(Setup, TracesNameAndCategoryAtTheOrdinaryLevel) {
    Read("NAME = \"Flip\" CATEGORY = \"Transitions\"");
    EXPECT_THAT(captured::TakeTraced(),
                ElementsAre(L"-----------------\nFlip/Transitions\n---------------\n"));
}

TEST_F(Setup, TraceLineIsCutToItsBuffer) {
    const std::string name(2000, 'x');
    ReadScript(TextOf({.setup = ("NAME = \"" + name + "\" CATEGORY = \"c\"").c_str()}));
    const auto traced = captured::TakeTraced();
    ASSERT_EQ(traced.size(), 1u);
    EXPECT_EQ(traced[0], L"-----------------\n" + std::wstring(1023 - 18, L'x'));
}

TEST_F(Setup, TracedTextsEndAtTheirFirstZero) {
    ReadScript("[SETUP] NAME = \"a" + std::string(1, '\0') + "b\" CATEGORY = \"c" +
               std::string(1, '\0') + "d\"");
    EXPECT_THAT(captured::TakeTraced(), ElementsAre(L"-----------------\na/c\n---------------\n"));
}

TEST_F(Setup, TraceLineIsWrittenEvenIfALaterSectionFails) {
    ReadScript(ScriptParts{.sources = nullptr});
    EXPECT_EQ(captured::TakeTraced().size(), 1u);
}

TEST_F(Setup, KeywordsAreTakenInAnyCaseAndValuesKeepTheirs) {
    const auto script = Read("nAmE = \"Flip\" category = \"tRANS\" Speed = 4 swap = no");
    EXPECT_EQ(script->GetName(), L"Flip");
    EXPECT_EQ(script->GetCategory(), L"tRANS");
    EXPECT_EQ(script->GetSpeed(), 4);
    EXPECT_TRUE(script->GetSwap());
}

TEST_F(Setup, SwapIsSetByAnyValue) {
    EXPECT_TRUE(Read("SWAP = FALSE NAME = \"n\" CATEGORY = \"c\"")->GetSwap());
    EXPECT_TRUE(Read("SWAP = maybe NAME = \"n\" CATEGORY = \"c\"")->GetSwap());
    EXPECT_FALSE(Read("NAME = \"n\" CATEGORY = \"c\"")->GetSwap());
}

TEST_F(Setup, FilterValueIsReadInAnyCase) {
    const auto script = ReadScript(ScriptParts{
        .setup = "IS_FILTER = true NAME = \"n\" CATEGORY = \"c\"", .sources = "A = INPUT"});
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_TRUE(script->IsFilter());
    EXPECT_FALSE(
        Read("IS_FILTER = TRUE IS_FILTER = False NAME = \"n\" CATEGORY = \"c\"")->IsFilter());
}

TEST_F(Setup, UnknownFilterValueIsStatus12AndStopsBeforeSources) {
    const auto script = ReadScript(ScriptParts{
        .setup = "NAME = \"n\" IS_FILTER = maybe CATEGORY = \"c\"", .sources = "A = INPUT"});
    EXPECT_EQ(script->GetReadStatus(), 12);
    EXPECT_EQ(script->GetName(), L"n");
    EXPECT_EQ(script->GetCategory(), L"");
    EXPECT_TRUE(script->GetInputs().empty());
    EXPECT_THAT(captured::TakeTraced(), IsEmpty());
}

TEST_F(Setup, StatementsWithOtherKeywordsArePassedOver) {
    const auto script = Read(
        "AUTHOR = \"me\" VERSION = 3 DRAFT = YES %v% = \"text\" NAME = \"n\" CATEGORY = \"c\"");
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_EQ(script->GetName(), L"n");
    EXPECT_EQ(script->GetSpeed(), 0);
    EXPECT_TRUE(script->GetRegistryValues().empty());
}

TEST_F(Setup, RegistryBlockNeedsTwoOrThreeTexts) {
    for (const char* block : {"{\"a\"}", "{\"a\", \"b\", \"c\", \"d\"}", "{}"}) {
        const std::string text =
            std::string("NAME = \"n\" CATEGORY = \"c\" %v% = REGS : ") + block + " SPEED = 5";
        const auto script = Read(text.c_str());
        EXPECT_EQ(script->GetReadStatus(), 0);
        EXPECT_TRUE(script->GetRegistryValues().empty()) << block;
        EXPECT_EQ(script->GetSpeed(), 0) << "the block ends the section: " << block;
    }
}

TEST_F(Setup, LaterRegistryValueReplacesTheWholeTriple) {
    const auto script = Read(
        "NAME = \"n\" CATEGORY = \"c\" %v% = regs : {\"a\", \"b\", \"c\"} %V% = REGS:{\"d\",\"\"}");
    ASSERT_EQ(script->GetRegistryValues().size(), 1u);
    EXPECT_EQ(script->GetRegistryValues().at(UpperName(L"V")),
              (compositions::RegistryValue{L"d", L"", L""}));
}

TEST_F(Setup, AQuotedTextInPlaceOfTheBlockIsPassedOver) {
    EXPECT_TRUE(Read("%v% = \"REGS\" NAME = \"n\" CATEGORY = \"c\"")->GetRegistryValues().empty());
}

TEST_F(Setup, EndsAtTheFirstTextThatIsNoStatement) {
    const auto script = Read("NAME = \"n\" CATEGORY = \"c\" oops SPEED = 5");
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_EQ(script->GetSpeed(), 0);
}

TEST_F(Setup, LaterStatementReplacesTheEarlier) {
    const auto script =
        Read("NAME = \"a\" NAME = \"b\" CATEGORY = \"c\" CATEGORY = \"d\" SPEED = 1 SPEED = 2");
    EXPECT_EQ(script->GetName(), L"b");
    EXPECT_EQ(script->GetCategory(), L"d");
    EXPECT_EQ(script->GetSpeed(), 2);
}

TEST_F(Setup, NegativeAndHugeSpeedsAreDecimalNumbersOf32Bits) {
    EXPECT_EQ(Read("SPEED = -7 NAME = \"n\" CATEGORY = \"c\"")->GetSpeed(), -7);
    EXPECT_EQ(Read("SPEED = 99999999999 NAME = \"n\" CATEGORY = \"c\"")->GetSpeed(), 2147483647);
    EXPECT_EQ(Read("SPEED = -99999999999 NAME = \"n\" CATEGORY = \"c\"")->GetSpeed(),
              -2147483647 - 1);
    EXPECT_EQ(Read("SPEED = 12_3 NAME = \"n\" CATEGORY = \"c\"")->GetSpeed(), 12);
}

TEST_F(Setup, AMinusThatRunsToTheNextDigitHasNoValueOfItsOwn) {
    // The sign and all that follows up to the digit are one text, which is no number.
    EXPECT_EQ(Read("NAME = \"n\" CATEGORY = \"c\" SPEED = - 5")->GetSpeed(), 0);
}

TEST(NumberOf, SkipsBlanksTakesASignAndSaturates) {
    EXPECT_EQ(NumberOf(L""), 0);
    EXPECT_EQ(NumberOf(L"  \t\r\n\v\f"), 0);
    EXPECT_EQ(NumberOf(L" \t42abc"), 42);
    EXPECT_EQ(NumberOf(L"+7"), 7);
    EXPECT_EQ(NumberOf(L"-+7"), 0);
    EXPECT_EQ(NumberOf(L"- 7"), 0);
    EXPECT_EQ(NumberOf(L"x"), 0);
    EXPECT_EQ(NumberOf(L"2147483647"), 2147483647);
    EXPECT_EQ(NumberOf(L"2147483648"), 2147483647);
    EXPECT_EQ(NumberOf(L"-2147483648"), -2147483647 - 1);
    EXPECT_EQ(NumberOf(L"-2147483649"), -2147483647 - 1);
    EXPECT_EQ(NumberOf(L"99999999999999999999999999"), 2147483647);
}

}  // namespace
