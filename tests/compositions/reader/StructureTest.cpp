#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/reader/ReadScript.h"
#include "helpers/report/CapturedOutput.h"

using compositions::Section;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const kAssertion =
    "ASSERT in file: CompScript, line: (491) name: "
    "compositions::CompositionScript::ReadStructureSection\n";

class Structure : public testing::Test {
protected:
    Structure() { captured::TakeDebugged(); }

    static auto Read(const char* statements) {
        return ReadScript(ScriptParts{.sources = "In1 = INPUT Num = 4 Pic = BITMAP : \"p\"",
                                      .effects = "E1 = \"e\" E2 = \"e\" M = MIX",
                                      .structure = statements});
    }
};

TEST_F(Structure, NamesFromAllSixPlacesAreWired) {
    const auto script = Read("OUTPUT = MIX(E1(in1), E2(Pic, NUM), m)");
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_EQ(Written(script->GetStructure()), L"MIX1(E1(IN1),E2(PIC,NUM),M)");
    EXPECT_TRUE(script->GetStructure().secondary.empty());
    EXPECT_THAT(captured::TakeDebugged(), IsEmpty());
}

TEST_F(Structure, MissingHeaderIsStatus6) {
    const auto script = ReadScript(ScriptParts{.effects = "E = \"e\"", .structure = nullptr});
    EXPECT_EQ(script->GetReadStatus(), 6);
    EXPECT_EQ(script->GetEffectInstances().size(), 1u);
}

TEST_F(Structure, WithoutItsOutputStatementIsStatus7) {
    EXPECT_EQ(Read("E1(In1)")->GetReadStatus(), 7);
    EXPECT_EQ(Read("")->GetReadStatus(), 7);
    EXPECT_EQ(Read("OUTPUT E1")->GetReadStatus(), 7);
    EXPECT_EQ(Read("RESULT = E1")->GetReadStatus(), 7);
    const auto script = Read("E1(In1)");
    EXPECT_THAT(Written(script->GetInputs()), ElementsAre(L"IN1"));
    EXPECT_EQ(script->GetEffectInstances().size(), 2u);
    EXPECT_THAT(Written(script->GetMixes()), ElementsAre(L"M"));
    EXPECT_EQ(script->GetStructure().name.Data(), nullptr);
}

TEST_F(Structure, UnknownNameIsStatus8AndStopsTheReading) {
    const auto script =
        ReadScript(ScriptParts{.structure = "OUTPUT = MIX(Nobody)", .properties = "\"p\" = 1"});
    EXPECT_EQ(script->GetReadStatus(), 8);
    EXPECT_TRUE(script->GetProperties().empty());
    EXPECT_EQ(script->GetSectionStatuses()[Section::kStructure], 8);
    EXPECT_EQ(script->GetSectionStatuses()[Section::kProperties], -1);
    EXPECT_THAT(Written(script->GetMixes()), ElementsAre(L"MIX0"));
    EXPECT_EQ(script->GetStructure().name.Data(), nullptr);
}

TEST_F(Structure, MixesMadeHereCannotBeNamed) {
    EXPECT_EQ(Read("OUTPUT = MIX(MIX1)")->GetReadStatus(), 8);
    EXPECT_EQ(Read("OUTPUT = MIX(M)")->GetReadStatus(), 0);
}

TEST_F(Structure, EachMixWordDeclaresAMix) {
    const auto script = Read("OUTPUT = mix(Mix, E1(MIX))");
    EXPECT_THAT(Written(script->GetMixes()), ElementsAre(L"M", L"MIX1", L"MIX2", L"MIX3"));
    EXPECT_EQ(Written(script->GetStructure()), L"MIX1(MIX2,E1(MIX3))");
}

TEST_F(Structure, AutomaticNameMayRepeatADeclaredOne) {
    const auto script =
        ReadScript(ScriptParts{.effects = "a = MIX Mix2 = MIX", .structure = "OUTPUT = MIX(mix2)"});
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_THAT(Written(script->GetMixes()), ElementsAre(L"A", L"MIX2", L"MIX2"));
    EXPECT_EQ(Written(script->GetStructure()), L"MIX2(MIX2)");
}

TEST_F(Structure, TheWordMixComesBeforeADeclaredNameOfThatSpelling) {
    const auto script =
        ReadScript(ScriptParts{.effects = "Mix = \"e\"", .structure = "OUTPUT = Mix"});
    EXPECT_EQ(Written(script->GetStructure()), L"MIX0");
}

TEST_F(Structure, CommasOnlySeparate) {
    for (const char* text : {"OUTPUT = E1(In1, Num)", "OUTPUT = E1(In1 Num)",
                             "OUTPUT = ,,E1(,In1,,Num,),", "OUTPUT=E1 ( In1\nNum )"}) {
        const auto script = Read(text);
        EXPECT_EQ(script->GetReadStatus(), 0) << text;
        EXPECT_EQ(Written(script->GetStructure()), L"E1(IN1,NUM)") << text;
    }
}

TEST_F(Structure, EmptyParenthesesAddNothing) {
    EXPECT_EQ(Written(Read("OUTPUT = E1()")->GetStructure()), L"E1");
    EXPECT_EQ(Written(Read("OUTPUT = E1(E2(), In1(,))")->GetStructure()), L"E1(E2,IN1)");
}

TEST_F(Structure, FaultyParenthesesAreStatus12) {
    for (const char* text :
         {"OUTPUT = E1)", "OUTPUT = )", "OUTPUT = (E1)", "OUTPUT = E1,(In1)", "OUTPUT = E1(In1",
          "OUTPUT = E1(", "OUTPUT = E1()()", "OUTPUT = E1((In1))", "OUTPUT = E1(In1)(Num)"}) {
        const auto script = Read(text);
        EXPECT_EQ(script->GetReadStatus(), 12) << text;
        EXPECT_EQ(script->GetStructure().name.Data(), nullptr) << text;
    }
    EXPECT_THAT(captured::TakeDebugged(), IsEmpty());
    EXPECT_THAT(Written(Read("OUTPUT = MIX(MIX, E1))MIX")->GetMixes()),
                ElementsAre(L"M", L"MIX1", L"MIX2"));
}

TEST_F(Structure, WhatIsMetFirstDecidesBetween8And12) {
    EXPECT_EQ(Read("OUTPUT = Nobody)")->GetReadStatus(), 8);
    EXPECT_EQ(Read("OUTPUT = E1) Nobody")->GetReadStatus(), 12);
    EXPECT_EQ(Read("OUTPUT = E1(Nobody")->GetReadStatus(), 8);
}

TEST_F(Structure, NoNodeWritesTheAssertionAndReadsOn) {
    for (const char* text : {"OUTPUT =", "OUTPUT = ,,", "OUTPUT = 5"}) {
        const auto script = Read(text);
        EXPECT_EQ(script->GetReadStatus(), 0) << text;
        EXPECT_EQ(script->GetStructure().name.Data(), nullptr) << text;
        EXPECT_THAT(captured::TakeDebugged(), ElementsAre(kAssertion)) << text;
    }
}

TEST_F(Structure, OfSeveralRootsTheLastIsTheStructure) {
    const auto script = ReadScript(ScriptParts{.effects = "E1 = \"e\" E2 = \"e\"",
                                               .structure = "OUTPUT = E1(E2) E2(E1)",
                                               .properties = "\"p\" = 1"});
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_EQ(Written(script->GetStructure()), L"E2(E1)");
    EXPECT_THAT(captured::TakeDebugged(), ElementsAre(kAssertion));
    EXPECT_EQ(script->GetProperties().size(), 1u);
}

// Few names are looked through, many are indexed.
TEST_F(Structure, NamesAreFoundHoweverManyThereAre) {
    std::string inputs;
    std::string wires;
    for (int count = 1; count <= 300; ++count) {
        inputs += "Cam" + std::to_string(count) + " = INPUT\n";
        wires += "CAM" + std::to_string(count) + ",";
        if (count > 20 && count < 300) continue;
        const std::string text =
            TextOf({.sources = inputs.c_str(), .structure = nullptr}) + "[STRUCTURE]\nOUTPUT = ";
        const auto script = ReadScript(text + "MIX(" + wires + ")");
        ASSERT_EQ(script->GetReadStatus(), 0) << count;
        ASSERT_EQ(script->GetStructure().inputs.size(), static_cast<std::size_t>(count));
        ASSERT_EQ(ReadScript(text + "Cam" + std::to_string(count + 1))->GetReadStatus(), 8);
    }
}

}  // namespace
