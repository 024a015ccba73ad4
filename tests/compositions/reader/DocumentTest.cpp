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
