// Texts that would exhaust a small stack, or take for ever, if anything were done the plain way.

#include <gtest/gtest.h>

#include "compositions/reader/ReadScript.h"
#include "helpers/report/CapturedOutput.h"
#include "support/SmallStack.h"

using compositions::Section;

namespace {

constexpr int kMany = 1'000'000;

std::string Repeated(const std::string& piece, int times) {
    std::string text;
    text.reserve(piece.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i) text += piece;
    return text;
}

void ReadOnSmallStack(const std::string& text, int readStatus, Section section, int status) {
    RunOnSmallStack([&] {
        const auto script = ReadScript(text);
        EXPECT_EQ(script->GetReadStatus(), readStatus);
        EXPECT_EQ(script->GetSectionStatuses()[section], status);
    });
}

TEST(Hostile, AMillionNestedParentheses) {
    const std::string start = TextOf({.effects = "E = \"e\"", .structure = nullptr});
    const std::string open = start + "[STRUCTURE] OUTPUT = E" + Repeated("(E", kMany);
    ReadOnSmallStack(open + std::string(kMany, ')'), 0, Section::kStructure, 0);
    ReadOnSmallStack(open, 12, Section::kStructure, 12);
}

TEST(Hostile, AMillionWordsBeforeAName) {
    const std::string words = Repeated("w ", kMany);
    ReadOnSmallStack(TextOf({.properties = ""}) + words + "\"p\" = 1", 0, Section::kProperties, 0);
    ReadOnSmallStack(TextOf({.properties = ""}) + words, 0, Section::kProperties, 0);
    ReadOnSmallStack(TextOf({.effects = "E = \"e\"", .mapping = ""}) + words + "\"p\" = E.\"q\"", 0,
                     Section::kMapping, 0);
}

TEST(Hostile, AMillionKeys) {
    const std::string keys = "A = {1}, " + Repeated("{0,1,HOLD},", kMany);
    ReadOnSmallStack(TextOf({.envelopes = ""}) + keys + "{1, HOLD}", 0, Section::kEnvelopes, 0);
    ReadOnSmallStack(TextOf({.envelopes = ""}) + keys, 0, Section::kEnvelopes, 0);
}

TEST(Hostile, HundredThousandsOfTargets) {
    std::string mapping = "\"p\" = E.\"q\"";
    std::string timeline = "E.\"r\"";
    for (int i = 0; i < 100'000; ++i) {
        mapping += ",E.\"m" + std::to_string(i) + "\"";
        timeline += ",E.\"t" + std::to_string(i) + "\"";
    }
    timeline += " = F";
    const auto script = ReadScript(TextOf({.effects = "E = \"e\"",
                                           .mapping = mapping.c_str(),
                                           .envelopes = "F = {1}, {0, HOLD}",
                                           .timeline = timeline.c_str()}));
    EXPECT_EQ(script->GetMappings().size(), 100'001u);
    EXPECT_EQ(script->GetTimelineEvents().size(), 100'001u);
}

TEST(Hostile, ManyMixWordsAndManyWiredInputs) {
    const auto mixes =
        ReadScript(TextOf({.structure = "OUTPUT = MIX("}) + Repeated("MIX,", 200'000) + ")");
    EXPECT_EQ(mixes->GetReadStatus(), 0);
    EXPECT_EQ(mixes->GetMixes().size(), 200'001u);

    std::string inputs;
    std::string wires = "OUTPUT = MIX(";
    for (int i = 0; i < 100'000; ++i) {
        inputs += "I" + std::to_string(i) + "=INPUT ";
        wires += "I" + std::to_string(i) + " ";
    }
    wires += ")";
    const auto wired = ReadScript(TextOf({.sources = inputs.c_str(), .structure = wires.c_str()}));
    EXPECT_EQ(wired->GetReadStatus(), 0);
    EXPECT_EQ(wired->GetStructure().inputs.size(), 100'000u);
}

// Equal names that all fell on one place of the look-up once made this quadratic.
TEST(Hostile, ManyEqualNamesAndTargets) {
    const auto names = ReadScript(TextOf({.sources = Repeated("I = INPUT ", 200'000).c_str(),
                                          .effects = Repeated("M = MIX ", 200'000).c_str(),
                                          .structure = "OUTPUT = M(I)"}));
    EXPECT_EQ(names->GetReadStatus(), 0);
    EXPECT_EQ(names->GetInputs().size(), 200'000u);

    std::string mapping;
    for (int i = 0; i < 100'000; ++i) mapping += "\"p" + std::to_string(i) + "\" = E.\"q\" ";
    const auto targets = ReadScript(TextOf({.effects = "E = \"e\"",
                                            .mapping = mapping.c_str(),
                                            .envelopes = "F = {1}, {0, HOLD}",
                                            .timeline = "E.\"q\" = F"}));
    EXPECT_EQ(targets->GetMappings().size(), 100'000u);
    EXPECT_EQ(targets->GetSectionStatuses()[Section::kTimeline], 19);
}

TEST(Hostile, MegabytesOfOneCharacter) {
    const std::string start = TextOf({}) + "{ ";  // ends the last section
    for (const char* piece : {" ", "[", "-", "a ", "\"", "(", ";", "[SETUP", "{", "%", "\n", "]",
                              "=", ".", "a", "1", "\xE9", "+"}) {
        const std::string text = Repeated(piece, kMany);
        EXPECT_EQ(ReadScript(text)->GetReadStatus(), 1) << piece;
        EXPECT_EQ(ReadScript(start + text)->GetReadStatus(), 0) << piece;
    }
}

}  // namespace
