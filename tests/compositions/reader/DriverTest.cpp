#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

#include "compositions/language/CompInterpreter.h"
#include "compositions/reader/ReadScript.h"

using compositions::CompositionScript;
using compositions::Section;
using compositions::SectionStatuses;

namespace {

const ScriptParts kWhole{.setup = "NAME = \"n\" CATEGORY = \"c\"",
                         .sources = "A = INPUT",
                         .effects = "E = \"e\"",
                         .structure = "OUTPUT = E(A)",
                         .properties = "\"p\" = 1",
                         .mapping = "\"p\" = E.\"q\"",
                         .envelopes = "F = {1}, {0, HOLD}",
                         .timeline = "E.\"r\" = F"};

std::vector<std::string> SectionsOf(const ScriptParts& parts) {
    const std::string text = TextOf(parts);
    std::vector<std::string> sections;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find("\n[", begin), text.size());
        sections.push_back(text.substr(begin, end - begin) + "\n");
        begin = end + 1;
    }
    return sections;
}

TEST(Driver, SectionsInEveryOrderReadTheSame) {
    std::vector<std::string> sections = SectionsOf(kWhole);
    ASSERT_EQ(sections.size(), 8u);
    const auto expected = ReadScript(kWhole);
    ASSERT_EQ(expected->GetReadStatus(), 0);
    ASSERT_EQ(expected->GetTimelineEvents().size(), 1u);
    std::ranges::sort(sections);
    int orders = 0;
    do {
        std::string text;
        for (const std::string& section : sections) text += section;
        const auto script = ReadScript(text);
        ASSERT_TRUE(script->GetDescription() == expected->GetDescription()) << text;
        ASSERT_TRUE(script->GetSectionStatuses() == expected->GetSectionStatuses()) << text;
        ++orders;
    } while (std::ranges::next_permutation(sections).found);
    EXPECT_EQ(orders, 40'320);
}

TEST(Driver, EachMissingSectionLeavesItsOwnStatus) {
    const struct {
        const char* ScriptParts::*part;
        Section section;
        int status;
        int readStatus;
    } cases[] = {
        {&ScriptParts::setup, Section::kSetup, 1, 1},
        {&ScriptParts::sources, Section::kSources, 4, 4},
        {&ScriptParts::effects, Section::kEffects, 5, 5},
        {&ScriptParts::structure, Section::kStructure, 6, 6},
        {&ScriptParts::properties, Section::kProperties, 2, 0},
        {&ScriptParts::mapping, Section::kMapping, 9, 0},
        {&ScriptParts::envelopes, Section::kEnvelopes, 15, 0},
        {&ScriptParts::timeline, Section::kTimeline, 18, 0},
    };
    for (const auto& c : cases) {
        ScriptParts parts = kWhole;
        parts.*c.part = nullptr;
        const auto script = ReadScript(parts);
        EXPECT_EQ(script->GetSectionStatuses()[c.section], c.status) << c.status;
        EXPECT_EQ(script->GetReadStatus(), c.readStatus) << c.status;
    }
}

TEST(Driver, SectionsBehindAFailureAreNotReached) {
    ScriptParts parts = kWhole;
    parts.effects = nullptr;
    const SectionStatuses statuses = ReadScript(parts)->GetSectionStatuses();
    EXPECT_EQ(statuses[Section::kSources], 0);
    EXPECT_EQ(statuses[Section::kStructure], -1);
    EXPECT_EQ(statuses[Section::kTimeline], -1);
}

TEST(Driver, AHeaderInAStringIsTakenAsTheSection) {
    const auto script = ReadScript(
        "[SETUP]\nNAME = \"[SOURCES] X = INPUT \" CATEGORY = \"c\"\n[SOURCES]\nY = INPUT\n"
        "[EFFECTS]\n[STRUCTURE]\nOUTPUT = MIX");
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_THAT(Written(script->GetInputs()), testing::ElementsAre(L"X"));
}

TEST(Driver, AHeaderInACommentIsNone) {
    const auto script = ReadScript("; [SETUP] NAME = \"no\" CATEGORY = \"no\"\n" + TextOf(kWhole));
    EXPECT_EQ(script->GetName(), L"n");
}

TEST(Driver, AHeaderMustBeFollowedByABlank) {
    EXPECT_EQ(ReadScript("[SETUP]NAME = \"n\" CATEGORY = \"c\"")->GetReadStatus(), 1);
    // The comment takes its line end with it.
    EXPECT_EQ(ReadScript("[SETUP];note\nNAME = \"n\" CATEGORY = \"c\"")->GetReadStatus(), 1);
    EXPECT_EQ(ReadScript("[SETUP] ;note\nNAME = \"n\" CATEGORY = \"c\"")->GetReadStatus(), 4);
}

TEST(Driver, TheSecondSectionOfTheSameNameIsNeverRead) {
    const auto script = ReadScript(TextOf(kWhole) + "[SOURCES]\nB = INPUT\n");
    EXPECT_THAT(Written(script->GetInputs()), testing::ElementsAre(L"A"));
}

TEST(Driver, EmptyAndBlankScriptsHaveNoSetup) {
    for (const char* text : {"", " ", "\n\n\r\t", ";", "; only a comment", "\"", "[", "[SETUP"}) {
        EXPECT_EQ(ReadScript(text)->GetReadStatus(), 1) << text;
    }
}

TEST(Driver, WorksFromAFileThatIsGoneAfterwards) {
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() /
        ("tarnex-reader-" + std::to_string(std::random_device{}()) + ".txt");
    std::ofstream(path, std::ios::binary) << TextOf(kWhole);
    std::unique_ptr<CompositionScript> script;
    {
        const CompositionScript::ScriptFile file(path.wstring());
        script = std::make_unique<CompositionScript>(file);
    }
    std::filesystem::remove(path);
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_TRUE(script->GetDescription() == ReadScript(kWhole)->GetDescription());
}

TEST(Driver, AFileThatIsNotThereHasNoSetup) {
    const CompositionScript::ScriptFile file(L"no-such-folder/no-such-file.txt");
    EXPECT_EQ(CompositionScript(file).GetReadStatus(), 1);
}

TEST(Driver, ADescriptionCanBeTakenOver) {
    compositions::CompositionDescription description = ReadScript(kWhole)->GetDescription();
    const CompositionScript script(description);
    EXPECT_EQ(script.GetReadStatus(), 0);
    EXPECT_TRUE(script.GetDescription() == description);
    EXPECT_EQ(CompositionScript(description, 7).GetReadStatus(), 7);
    EXPECT_EQ(script.GetSectionStatuses()[Section::kSetup], -1);
}

TEST(Driver, TheInterfaceShowsEveryField) {
    const auto script = ReadScript(kWhole);
    const compositions::ICompositionReader& reader = *script;
    const compositions::CompositionDescription& d = script->GetDescription();
    EXPECT_EQ(reader.GetName(), d.name);
    EXPECT_EQ(reader.GetCategory(), d.category);
    EXPECT_EQ(&reader.GetInputs(), &d.inputs);
    EXPECT_EQ(&reader.GetMediaSources(), &d.mediaSources);
    EXPECT_EQ(&reader.GetEffectInstances(), &d.effectInstances);
    EXPECT_EQ(&reader.GetMappings(), &d.mappings);
    EXPECT_EQ(&reader.GetProperties(), &d.properties);
    EXPECT_EQ(&reader.GetEnvelopes(), &d.envelopes);
    EXPECT_EQ(&reader.GetTimelineEntries(), &d.timelineEntries);
    EXPECT_EQ(&reader.GetTimelineEvents(), &d.timelineEvents);
    EXPECT_EQ(&reader.GetStructure(), &d.structure);
    EXPECT_EQ(&reader.GetNumberedInputs(), &d.numberedInputs);
    EXPECT_EQ(&reader.GetMixes(), &d.mixes);
    EXPECT_EQ(&reader.GetRegistryValues(), &d.registryValues);
}

TEST(Driver, NamesWithAZeroEndThereAndTextsDoNot) {
    const std::string text = TextOf({.effects = "E1@ = \"x@y\"", .structure = "OUTPUT = e1"});
    std::string bytes = text;
    std::ranges::replace(bytes, '@', '\0');
    const auto script = ReadScript(bytes);
    EXPECT_EQ(script->GetReadStatus(), 0);
    ASSERT_EQ(script->GetEffectInstances().size(), 1u);
    EXPECT_EQ(script->GetEffectInstances().begin()->second, std::wstring(L"x\0y", 3));
}

TEST(ReadStatus, EveryStatusHasItsTextAndOthersHaveNone) {
    std::vector<std::string> texts;
    for (int status = -1; status <= 21; ++status) {
        const std::string text = compositions::ReadStatusText(status);
        const bool isKnown = status <= 20 && status != 16;
        EXPECT_EQ(text != "unknown status", isKnown) << status;
        if (!isKnown) continue;
        EXPECT_EQ(std::ranges::count(texts, text), 0) << text;
        texts.push_back(text);
    }
    EXPECT_STREQ(compositions::SectionKeyword(Section::kSetup), "SETUP");
    EXPECT_STREQ(compositions::SectionKeyword(Section::kTimeline), "TIMELINE");
}

}  // namespace
