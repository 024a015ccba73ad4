// The page that teaches the language: its scripts read as it says.

#include <gtest/gtest.h>

#include "compositions/reader/ReadScript.h"

using compositions::Section;

namespace {

const std::string kPage = std::string(TARNEX_SOURCE_DIR) + "/docs/composition_language.md";

// The blocks of the page that are fenced with the word.
std::vector<std::string> Blocks(const std::string& word) {
    const std::string page = FileText(kPage);
    const std::string fence = "\n```" + word + "\n";
    std::vector<std::string> blocks;
    for (std::size_t at = page.find(fence); at != page.npos; at = page.find(fence, at)) {
        at += fence.size();
        blocks.push_back(page.substr(at, page.find("```", at) - at));
    }
    return blocks;
}

class LastEnd : public compositions::ReadingObserver {
public:
    void OnSectionEnd(const compositions::SectionEnd& end) override {
        offsets.push_back(end.offset);
    }
    std::vector<std::uint64_t> offsets;
};

TEST(Document, ItsScriptsReadToTheirLastStatement) {
    const std::vector<std::string> blocks = Blocks("script");
    ASSERT_GE(blocks.size(), 9u);
    for (const std::string& text : blocks) {
        LastEnd ends;
        const auto script = ReadScript(text, &ends);
        EXPECT_EQ(script->GetReadStatus(), 0) << text;
        for (const std::uint64_t offset : ends.offsets) {
            EXPECT_TRUE(offset == text.size() || text[offset] == '[') << offset << "\n" << text;
        }
        for (const char* keyword : {"PROPERTIES", "MAPPING", "ENVELOPES", "TIMELINE"}) {
            if (text.find(std::string("[") + keyword + "]") == text.npos) continue;
            for (int i = 4; i < 8; ++i) {
                const auto section = static_cast<Section>(i);
                if (SectionKeyword(section) != std::string(keyword)) continue;
                EXPECT_EQ(script->GetSectionStatuses()[section], 0) << text;
            }
        }
    }
}

TEST(Document, ItsBrokenScriptHasNoSetup) {
    const std::vector<std::string> blocks = Blocks("script-broken");
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(ReadScript(blocks[0])->GetReadStatus(), 1);
}

TEST(Document, ItsStructureMakesTheMixThatItSays) {
    for (const std::string& text : Blocks("script")) {
        if (text.find("NAME = \"Structure\"") == text.npos) continue;
        EXPECT_EQ(Written(ReadScript(text)->GetStructure()),
                  L"JOIN(LEFT,SOFTEN(RIGHT),MIX1(LEFT,RIGHT))");
        return;
    }
    FAIL() << "no such script on the page";
}

TEST(Document, AMinusRunsOnToTheNextDigit) {
    const auto script =
        ReadScript(TextOf({.properties = "\"Level\" = -auto\n\"Other\" = 5\n\"Third\" = 6"}));
    ASSERT_EQ(script->GetProperties().size(), 2u);
    EXPECT_EQ(script->GetProperties()[0].value, L"-auto\n\"Other\" = 5");
    EXPECT_EQ(script->GetProperties()[1].name, L"Third");
}

TEST(Document, AFullStopRunsOnToTheNextQuote) {
    const auto script =
        ReadScript(TextOf({.effects = "Soften = \"e\" Grade = \"e\"",
                           .mapping = "\"Strength\" = Soften.Radius, Grade.\"Gamma\""}));
    ASSERT_EQ(script->GetMappings().size(), 1u);
    EXPECT_EQ(script->GetMappings()[0].property, compositions::UpperName(L"STRENGTH"));
    EXPECT_EQ(script->GetMappings()[0].instance, compositions::UpperName(L"SOFTEN"));
    EXPECT_EQ(script->GetMappings()[0].targetProperty, L"Gamma");
}

TEST(Document, ADigitBetweenAFullStopAndItsQuoteEndsTheSection) {
    const auto script =
        ReadScript(TextOf({.effects = "E = \"e\"",
                           .mapping = "\"a\" = E.\"x\" \"b\" = E.y2, E.\"z\" \"c\" = E.\"w\""}));
    EXPECT_EQ(script->GetMappings().size(), 1u);
}

TEST(Document, ABracketRunsOnToTheNextLetter) {
    const auto script = ReadScript("[_?SETUP] NAME = \"n\" CATEGORY = \"c\"");
    EXPECT_EQ(script->GetSectionStatuses()[compositions::Section::kSetup], 0);
}

TEST(Document, ACommentAtTheVeryEndTakesTheLastNameOrNumber) {
    const std::string start = TextOf({.effects = "E = \"e\"", .structure = nullptr});
    const auto named = ReadScript(start + "[STRUCTURE] OUTPUT = E;done");
    EXPECT_EQ(named->GetReadStatus(), 0);
    EXPECT_EQ(named->GetStructure().name.Data(), nullptr);
    EXPECT_EQ(Written(ReadScript(start + "[STRUCTURE] OUTPUT = E;done\n")->GetStructure()), L"E");
    const std::string timeline = TextOf({.timeline = "E.\"a\" = 1 E.\"b\" = "});
    EXPECT_EQ(ReadScript(timeline + "2;done")->GetTimelineEntries().size(), 1u);
    EXPECT_EQ(ReadScript(timeline + "\"2\";done")->GetTimelineEntries().size(), 2u);
}

TEST(Document, AnUnknownValueEndsTheTimeline) {
    const auto script = ReadScript(TextOf({.timeline = "E.\"a\" = +5 E.\"b\" = 1"}));
    EXPECT_TRUE(script->GetTimelineEntries().empty());
}

TEST(Document, WhatTextsMayStartWith) {
    const auto reads = [](char first) {
        const std::string setup = std::string("NAME = \"") + first + "x\" CATEGORY = \"c\"";
        return ReadScript(TextOf({.setup = setup.c_str()}))->GetReadStatus() == 0;
    };
    for (char first : std::string("aZ09[]=:\\.(){},-% ")) EXPECT_TRUE(reads(first)) << first;
    for (char first : std::string("+_/#!&'*<>?@^`|~$\xE9")) EXPECT_FALSE(reads(first)) << first;
    EXPECT_FALSE(reads(';')) << "a comment";
}

}  // namespace
