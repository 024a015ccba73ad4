// Every script of examples/compositions, read whole and looked at in detail.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "compositions/reader/ReadScript.h"
#include "helpers/report/CapturedOutput.h"

using compositions::CompositionScript;
using compositions::EnvelopeKey;
using compositions::MediaItem;
using compositions::PropertyRecord;
using compositions::Section;
using compositions::TimelineEntry;
using compositions::TimelineEvent;
using compositions::UpperName;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

const std::string kFolder = std::string(TARNEX_SOURCE_DIR) + "/examples/compositions/";

// Reads an example, which must leave no section with a status but those that it does not have.
std::shared_ptr<CompositionScript> Example(const char* name) {
    captured::TakeDebugged();
    auto script = ReadScript(FileText(kFolder + name + ".txt"));
    EXPECT_EQ(script->GetReadStatus(), 0) << name;
    EXPECT_THAT(captured::TakeDebugged(), IsEmpty()) << name;
    for (const auto& [section, missing] :
         {std::pair(Section::kProperties, 2), std::pair(Section::kMapping, 9),
          std::pair(Section::kEnvelopes, 15), std::pair(Section::kTimeline, 18)}) {
        const int status = script->GetSectionStatuses()[section];
        EXPECT_TRUE(status == 0 || status == missing) << name << ": " << status;
    }
    return script;
}

TEST(Examples, EveryOneReadsToItsLastStatement) {
    std::set<std::wstring> names;
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
        if (entry.path().extension() != ".txt") continue;
        ++count;
        const auto script = Example(entry.path().stem().string().c_str());
        EXPECT_TRUE(names.insert(script->GetName()).second) << entry.path();

        // What ends a section is the next header, or the end of the file: nothing is left unread.
        const std::string text = FileText(entry.path().string());
        struct Ends : compositions::ReadingObserver {
            void OnSectionEnd(const compositions::SectionEnd& end) override {
                offsets.push_back(end.offset);
            }
            std::vector<std::uint64_t> offsets;
        } ends;
        ReadScript(text, &ends);
        for (const std::uint64_t offset : ends.offsets) {
            EXPECT_TRUE(offset == text.size() || text[offset] == '[')
                << entry.path() << " at " << offset;
        }
    }
    EXPECT_GE(count, 14);
}

TEST(Examples, MinimalFilter) {
    const auto script = Example("minimal_filter");
    EXPECT_EQ(script->GetName(), L"Soft Focus");
    EXPECT_TRUE(script->IsFilter());
    EXPECT_EQ(Written(script->GetStructure()), L"SOFTEN(VIDEO)");
}

TEST(Examples, Glow) {
    const auto script = Example("glow");
    EXPECT_EQ(script->GetSpeed(), 2);
    EXPECT_EQ(Written(script->GetStructure()), L"SUM(VIDEO,LIFT(SPREAD(VIDEO)))");
    EXPECT_THAT(script->GetProperties(), ElementsAre(PropertyRecord{3, L"Radius", L"12"},
                                                     PropertyRecord{11, L"Strength", L"0.75"},
                                                     PropertyRecord{35, L"Passes", L"3"},
                                                     PropertyRecord{1, L"Version", L"\"2.1\""}));
    ASSERT_EQ(script->GetMappings().size(), 3u);
    EXPECT_EQ(script->GetMappings()[1].access, 11u);
    EXPECT_EQ(script->GetMappings()[1].targetProperty, L"White");
}

TEST(Examples, Dissolve) {
    const auto script = Example("dissolve");
    EXPECT_THAT(script->GetNumberedInputs(),
                ElementsAre(Pair(UpperName(L"FROM"), 0), Pair(UpperName(L"TO"), 1)));
    EXPECT_EQ(Written(script->GetStructure()), L"BLEND(OUT(FROM),IN(TO))");
    EXPECT_EQ(script->GetEnvelopes().at(UpperName(L"FADEOUT")).keys.size(), 3u);
    EXPECT_THAT(script->GetTimelineEvents(),
                ElementsAre(TimelineEvent{UpperName(L"OUT"), L"OPACITY", UpperName(L"FADEOUT")},
                            TimelineEvent{UpperName(L"IN"), L"OPACITY", UpperName(L"FADEIN")}));
}

TEST(Examples, ElasticWipe) {
    const auto script = Example("elastic_wipe");
    EXPECT_EQ(script->GetSpeed(), -1);
    EXPECT_TRUE(script->GetSwap());
    const auto& travel = script->GetEnvelopes().at(UpperName(L"TRAVEL"));
    const UpperName hermite(L"HERMITE");
    EXPECT_THAT(travel.keys,
                ElementsAre(EnvelopeKey{L"0", L"0.0", hermite, L"0", L"2.5"},
                            EnvelopeKey{L"10", L"0.85", UpperName(L"CUBIC"), L"0.0", L"0.0"},
                            EnvelopeKey{L"17.5", L"1.125", hermite, L"0.0", L"0.0"},
                            EnvelopeKey{L"21", L"0.975", UpperName(L"COSINE"), L"0.0", L"0.0"},
                            EnvelopeKey{L"25", L"1.0", hermite, L"-0.5", L"0"}));
    const auto& dip = script->GetEnvelopes().at(UpperName(L"DIP"));
    EXPECT_EQ(dip.count, L"2.0");
    EXPECT_EQ(dip.keys[0].firstParameter, L"0.0");
    EXPECT_EQ(script->GetTimelineEntries().size(), 2u);
}

TEST(Examples, PictureInPicture) {
    const auto script = Example("picture_in_picture");
    EXPECT_THAT(Written(script->GetInputs()), ElementsAre(L"SLIDE", L"PRESENTER"));
    EXPECT_THAT(Written(script->GetMixes()), ElementsAre(L"FRAMED", L"SCREEN"));
    EXPECT_EQ(Written(script->GetStructure()),
              L"SCREEN(SLIDE,PLACE(FRAMED(SHRINK(PRESENTER),FRAME)))");
    EXPECT_THAT(script->GetMediaSources().at(UpperName(L"FRAME")).items,
                ElementsAre(MediaItem{false, L"frames\\thin white.png"}));
    EXPECT_EQ(script->GetMappings().size(), 4u);
}

TEST(Examples, LowerThird) {
    const auto script = Example("lower_third");
    EXPECT_EQ(script->GetRegistryValues().at(UpperName(L"STATION")).third, L"");
    EXPECT_EQ(script->GetRegistryValues().at(UpperName(L"MEDIAFOLDER")).third, L"C:\\Titles");
    EXPECT_THAT(script->GetMediaSources().at(UpperName(L"STRAP")).items,
                ElementsAre(MediaItem{true, L"MEDIAFOLDER"}, MediaItem{false, L"\\STRAPS\\"},
                            MediaItem{true, L"STATION"}, MediaItem{false, L".PNG"}));
    EXPECT_EQ(script->GetMediaSources().at(UpperName(L"SPARKLE")).kind, 1u);
    EXPECT_THAT(script->GetMediaSources().at(UpperName(L"SHADE")).items,
                ElementsAre(MediaItem{false, L"Shade.png"}));
    EXPECT_EQ(Written(script->GetStructure()),
              L"MIX0(VIDEO,SLIDE(MIX1(SHADE,STRAP,MIX2(NAME,ROLE),SPARKLE)))");
    EXPECT_EQ(script->GetTimelineEntries().back(),
              (TimelineEntry{UpperName(L"NAME"), L"FOLDER", L"MediaFolder", 2}));
}

TEST(Examples, ChromaKey) {
    const auto script = Example("chroma_key");
    EXPECT_FALSE(script->IsFilter());
    EXPECT_EQ(script->GetInputs().size() + script->GetNumberedInputs().size(), 2u);
    ASSERT_EQ(script->GetProperties().size(), 5u);
    EXPECT_EQ(script->GetProperties()[2], (PropertyRecord{43, L"Choke", L"2"}));
    EXPECT_EQ(script->GetProperties()[3], (PropertyRecord{7, L"Show matte", L"FALSE"}));
    EXPECT_EQ(script->GetMappings().size(), 6u);
}

TEST(Examples, FilmLook) {
    const auto script = Example("film_look");
    EXPECT_EQ(Written(script->GetStructure()),
              L"VIGNETTE(FLICKER(JITTER(DIRT(SEPIA(VIDEO),SCRATCHES,DUST))))");
    EXPECT_EQ(script->GetTimelineEvents().size(), 3u);
    EXPECT_EQ(script->GetTimelineEntries().size(), 4u);
    EXPECT_EQ(script->GetEnvelopes().at(UpperName(L"SHAKE")).keys[2].value, L"-0.001");
}

TEST(Examples, QuadSplit) {
    const auto script = Example("quad_split");
    EXPECT_THAT(Written(script->GetMixes()), ElementsAre(L"MIX0", L"MIX1", L"MIX2"));
    EXPECT_EQ(Written(script->GetStructure()),
              L"MIX0(MIX1(TOPLEFT(CAM1),TOPRIGHT(CAM2)),MIX2(BOTTOMLEFT(CAM3),BOTTOMRIGHT(CAM4)))");
    EXPECT_EQ(script->GetTimelineEntries().size(), 8u);
}

TEST(Examples, PageTurn) {
    const auto script = Example("page_turn");
    EXPECT_EQ(script->GetCategory(), L"Transitions");
    EXPECT_EQ(Written(script->GetStructure()), L"PAPER(PAGE(FRONT,BACK))");
    EXPECT_EQ(script->GetTimelineEvents().size(), 1u);
    EXPECT_EQ(script->GetEnvelopes().at(UpperName(L"TURN")).keys[1].firstParameter, L"0.2");
}

TEST(Examples, RelaxedSpelling) {
    const auto script = Example("relaxed_spelling");
    EXPECT_TRUE(script->IsFilter());
    EXPECT_EQ(script->GetSpeed(), 7);
    EXPECT_EQ(Written(script->GetStructure()), L"JOIN(INVERT(VIDEO),OVERLAY)");
    EXPECT_EQ(script->GetProperties().back(), (PropertyRecord{11, L"Mask", L"\"\""}));
    EXPECT_THAT(script->GetTimelineEntries(),
                ElementsAre(TimelineEntry{UpperName(L"INVERT"), L"THRESHOLD", L"- 3", 0},
                            TimelineEntry{UpperName(L"INVERT"), L"MODE", L"", 1}));
}

TEST(Examples, Countdown) {
    const std::string text = FileText(kFolder + "countdown.txt");
    EXPECT_NE(text.find("\r\n"), text.npos) << "its line ends are part of the example";
    const auto script = Example("countdown");
    EXPECT_TRUE(script->GetInputs().empty());
    EXPECT_EQ(Written(script->GetStructure()), L"MIX0(PAPER,LOOP(CLOCK),DIGITS)");
    EXPECT_EQ(script->GetTimelineEntries().size(), 2u);
}

TEST(Examples, ColourGrade) {
    const auto script = Example("colour_grade");
    EXPECT_EQ(script->GetProperties().size(), 9u);
    EXPECT_EQ(script->GetProperties().back(), (PropertyRecord{1, L"Peak", L"-6.5"}));
    EXPECT_EQ(script->GetMappings().size(), 11u);
    EXPECT_EQ(script->GetMappings().front().targetProperty, L"Shadow");
}

TEST(Examples, TitleRoll) {
    const auto script = Example("title_roll");
    EXPECT_EQ(script->GetRegistryValues().size(), 2u);
    EXPECT_EQ(script->GetEnvelopes().at(UpperName(L"DIMMING")).keys.size(), 4u);
    EXPECT_EQ(script->GetTimelineEvents().size(), 2u);
    EXPECT_EQ(script->GetTimelineEntries().size(), 10u);
}

}  // namespace
