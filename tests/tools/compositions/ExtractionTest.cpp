// Descriptions turned back into scripts that read to them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "archives/ArchiveReading.h"
#include "compositions/CompScript.h"
#include "compositions/Files.h"
#include "compositions/QuirkyScripts.h"
#include "compositions/archive/SampleDescriptions.h"
#include "extraction/ScriptOf.h"

namespace {

using namespace tooltest;
using compositions::CompositionDescription;
using compositions::CompositionScript;
using compositions::UpperName;
using tarnexctl::ExtractedScript;
using tarnexctl::Gap;
using tarnexctl::ScriptOf;
using testing::HasSubstr;

UpperName Name(std::wstring_view text) {
    return UpperName::Verbatim(text);
}

// As an archive keeps it: effect names end at their first zero.
CompositionDescription Archived(const std::string& script) {
    return tarnexctl::ReadArchive(ArchiveBytesOf(ReadDescription(script))).description;
}

std::string Listed(const tarnexctl::Gaps& gaps) {
    std::string text;
    for (const Gap& gap : gaps) text += gap.where + ": " + gap.why + "\n";
    return text;
}

// The script that comes out reads to what went in, to the last byte.
void ExpectRoundTrip(const CompositionDescription& description, const std::string& what) {
    const ExtractedScript script = ScriptOf(description);
    ASSERT_EQ(Listed(script.gaps), "") << what << "\n--- became\n" << script.bytes;
    ASSERT_EQ(ArchiveBytesOf(Archived(script.bytes)), ArchiveBytesOf(description))
        << what << "\n--- became\n"
        << script.bytes;
    ASSERT_EQ(CompositionScript(std::string_view(script.bytes)).GetReadStatus(), 0) << what;
}

TEST(Extraction, EveryExampleComesBack) {
    for (const std::string& path : ExampleScripts()) {
        ExpectRoundTrip(Archived(ReadFile(path)), path);
    }
}

unsigned Runs() {
    return std::getenv("TARNEX_LONG_TESTS") != nullptr ? 100'000 : 1500;
}

TEST(Extraction, EveryGeneratedScriptComesBack) {
    unsigned read = 0;
    for (unsigned seed = 0; seed < Runs(); ++seed) {
        const std::string script = QuirkyScripts(seed, false).Next();
        if (CompositionScript(std::string_view(script)).GetReadStatus() != 0) continue;
        ++read;
        ExpectRoundTrip(Archived(script), std::to_string(seed) + "\n" + script);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(read, Runs() / 3);
}

TEST(Extraction, TextsThatHoldHeadersPutSectionsIntoAnOtherOrder) {
    unsigned read = 0;
    unsigned circles = 0;
    for (unsigned seed = 0; seed < Runs(); ++seed) {
        const std::string script = QuirkyScripts(seed, true).Next();
        if (CompositionScript(std::string_view(script)).GetReadStatus() != 0) continue;
        ++read;
        const CompositionDescription description = Archived(script);
        const ExtractedScript extracted = ScriptOf(description);
        // The one thing that a script can do and its extraction cannot.
        if (extracted.gaps.size() == 1 && extracted.gaps[0].where == "texts of two sections") {
            ++circles;
            continue;
        }
        ExpectRoundTrip(description, std::to_string(seed) + "\n" + script);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(read, Runs() / 5);
    EXPECT_LT(circles, read / 5);
}

TEST(Extraction, AHeaderWithinATextIsPrecededByItsSection) {
    CompositionDescription d;
    d.name = L"[SOURCES] A = INPUT";
    d.category = L"[TIMELINE] ";
    d.inputs = {Name(L"B")};
    const ExtractedScript script = ScriptOf(d);
    ExpectRoundTrip(d, "headers");
    EXPECT_LT(script.bytes.find("B = INPUT"), script.bytes.find("NAME"));
}

TEST(Extraction, MixesThatTheStructureMakesAreNotDeclared) {
    const std::string head = "[SETUP]\nNAME = \"n\" CATEGORY = \"c\"\n[SOURCES]\n";
    const auto extracted = [&](const std::string& rest) {
        return ScriptOf(Archived(head + rest)).bytes;
    };
    EXPECT_THAT(extracted("[EFFECTS]\nJoin = MIX\n[STRUCTURE]\nOUTPUT = Join(MIX(MIX), MIX)\n"),
                HasSubstr("[EFFECTS]\nJOIN = MIX\n\n[STRUCTURE]\nOUTPUT = JOIN(MIX(MIX), MIX)\n"));
    // One that an outermost node before the last made is no part of the tree.
    EXPECT_THAT(extracted("[EFFECTS]\n[STRUCTURE]\nOUTPUT = MIX, MIX\n"),
                HasSubstr("[EFFECTS]\nMIX0 = MIX\n\n[STRUCTURE]\nOUTPUT = MIX\n"));
}

TEST(Extraction, EveryDescriptionEitherComesBackOrItsGapsAreNamed) {
    unsigned gaps = 0;
    for (unsigned seed = 0; seed < Runs(); ++seed) {
        const CompositionDescription description = samples::Generated(seed);
        const ExtractedScript script = ScriptOf(description);
        gaps += script.gaps.empty() ? 0 : 1;
        if (script.gaps.empty()) ExpectRoundTrip(description, std::to_string(seed));
    }
    EXPECT_GT(gaps, 0u);
}

TEST(Extraction, DeepAndWideTreesComeBack) {
    CompositionDescription d;
    d.name = d.category = L"n";
    d.inputs = {Name(L"A")};
    d.structure = compositions::StructureNode(Name(L"A"));
    compositions::StructureNode* node = &d.structure;
    for (int i = 0; i < 100'000; ++i) node = &node->inputs.emplace_back(Name(L"A"));
    for (int i = 0; i < 100'000; ++i) node->inputs.emplace_back(Name(L"A"));
    const ExtractedScript script = ScriptOf(d);
    EXPECT_TRUE(script.gaps.empty());
    EXPECT_TRUE(ReadDescription(script.bytes) == d);
}

// A description that reads, to which each test adds something that no script can say.
CompositionDescription Plain() {
    return Archived(
        "[SETUP]\nNAME = \"n\" CATEGORY = \"c\"\n[SOURCES]\nIn = INPUT\n"
        "[EFFECTS]\nBlur = \"Blur\"\n[STRUCTURE]\nOUTPUT = Blur(In)\n[PROPERTIES]\nREAD \"P\" = 1\n"
        "[MAPPING]\n\"P\" = Blur.\"Radius\"\n[ENVELOPES]\nE = {1}, {0, HOLD}\n"
        "[TIMELINE]\nBlur.\"Gain\" = E\nBlur.\"Size\" = 3\n");
}

// The gaps that are named, and that the rest of the script reads all the same.
std::string GapsOf(const CompositionDescription& description) {
    const ExtractedScript script = ScriptOf(description);
    const CompositionScript read{std::string_view(script.bytes)};
    EXPECT_EQ(read.GetReadStatus(), 0) << script.bytes;
    return Listed(script.gaps);
}

TEST(Extraction, WhatNoScriptCanDeclareIsNamed) {
    CompositionDescription d = Plain();
    d.effectInstances[Name(L"M")] = L"mix";
    EXPECT_EQ(GapsOf(d), "effect instance \"M\": an effect called MIX reads as a mixing node\n");
    d = Plain();
    d.effectInstances[Name(L"two words")] = L"x";
    EXPECT_EQ(GapsOf(d), "effect instance \"two words\": a script's names are in upper case\n");
    d = Plain();
    d.effectInstances[Name(L"TWO WORDS")] = L"x";
    EXPECT_EQ(GapsOf(d), "effect instance \"TWO WORDS\": no statement reads so\n");
    d = Plain();
    d.effectInstances[Name(L"X")] = L"say \"x\"";
    EXPECT_EQ(GapsOf(d), "effect instance \"X\": a quote ends a text\n");
    d = Plain();
    d.category = L"a;b";
    EXPECT_THAT(Listed(ScriptOf(d).gaps), HasSubstr("the category: \";\" starts a comment"));
    d = Plain();
    d.inputs.push_back(Name(L"\x4E2D"));
    EXPECT_THAT(GapsOf(d), HasSubstr("U+4E2D is no character of scripts"));
    d = Plain();
    d.name = L"";
    EXPECT_EQ(Listed(ScriptOf(d).gaps), "the name: it is empty, and a script needs one\n");
    d = Plain();
    d.isFilter = true;
    d.inputs.push_back(Name(L"B"));
    EXPECT_EQ(GapsOf(d), "the filter: a script's filter has exactly one input\n");
    d = Plain();
    d.mixes.push_back(Name(L""));
    EXPECT_EQ(GapsOf(d), "mix \"\": no statement reads so\n");
    d = Plain();
    d.registryValues[Name(L"A B")] = {L"x", L"y", L""};
    EXPECT_EQ(GapsOf(d), "registry value \"A B\": no statement reads so\n");
}

TEST(Extraction, WhatNoSourceCanBeIsNamed) {
    const auto withSource = [](std::uint32_t kind, std::vector<compositions::MediaItem> items) {
        CompositionDescription d = Plain();
        d.registryValues[Name(L"ART")] = {L"a", L"b", L""};
        d.mediaSources[Name(L"S")] = {kind, std::move(items)};
        return GapsOf(d);
    };
    EXPECT_EQ(withSource(0, {{false, L"x.png"}}), "");
    EXPECT_EQ(withSource(1, {{true, L"ART"}, {false, L"X.AVI"}}), "");
    const std::string source = "media source \"S\": ";
    EXPECT_EQ(withSource(2, {{false, L"x"}}), source + "its kind is neither BITMAP nor MOVIE\n");
    EXPECT_EQ(withSource(0, {}), source + "a path has at least one part\n");
    EXPECT_EQ(withSource(0, {{true, L"ART"}}),
              source + "a path of one part names no registry value\n");
    EXPECT_EQ(withSource(0, {{false, L"A"}, {false, L"b"}}),
              source + "a longer path's parts are in upper case\n");
    EXPECT_EQ(withSource(0, {{false, L"ART"}, {false, L"B"}}),
              source + "a longer path's parts name every registry value there is\n");
}

TEST(Extraction, WhatNoStructureCanHoldIsNamed) {
    CompositionDescription d = Plain();
    d.structure.inputs.emplace_back(Name(L"NOWHERE")).inputs.emplace_back(Name(L"IN"));
    EXPECT_EQ(GapsOf(d), "node \"NOWHERE\": the script does not declare it\n");
    d = Plain();
    d.structure.secondary.emplace_back(Name(L"IN"));
    EXPECT_EQ(GapsOf(d), "node \"BLUR\": a script has no second list of what feeds a node\n");
    d = Plain();
    d.effectInstances[Name(L"MIX")] = L"x";
    d.structure.inputs.emplace_back(Name(L"MIX"));
    EXPECT_EQ(GapsOf(d), "node \"MIX\": the word MIX makes a node of another name\n");
}

TEST(Extraction, WhatNoParameterCanBeIsNamed) {
    CompositionDescription d = Plain();
    d.properties.push_back({2, L"Q", L"1"});
    d.properties.push_back({1 | 4 | 8, L"Q", L"1"});
    EXPECT_EQ(GapsOf(d),
              "property \"Q\": no access words set these flags\n"
              "property \"Q\": no access words set these flags\n");
    d = Plain();
    d.properties.push_back({1, L"WRITE", L"1"});
    EXPECT_EQ(GapsOf(d), "property \"WRITE\": a name that is an access word reads as one\n");
    d = Plain();
    d.properties.push_back({1, L"Q", L"perhaps"});  // Q "perhaps" = 0 reads so
    d.properties.push_back({1, L"Q Q", L"perhaps"});
    EXPECT_EQ(GapsOf(d), "property \"Q Q\": no statement reads so\n");
    d = Plain();
    d.mappings.push_back({Name(L"P"), 1, Name(L"OTHER"), L"x"});
    d.mappings.push_back(d.mappings[0]);
    d.mappings.push_back({Name(L"P"), 64, Name(L"BLUR"), L"x"});
    d.mappings.push_back({Name(L"p"), 1, Name(L"BLUR"), L"x"});
    EXPECT_EQ(GapsOf(d),
              "mapping of \"P\": its target is no effect of the script\n"
              "mapping of \"P\": a script maps nothing twice\n"
              "mapping of \"P\": no access words set these flags\n"
              "mapping of \"p\": a script's names are in upper case\n");
}

TEST(Extraction, WhatNoEnvelopeOrTimelineCanBeIsNamed) {
    const auto withKeys = [](std::vector<compositions::EnvelopeKey> keys) {
        CompositionDescription d = Plain();
        d.envelopes[Name(L"X")] = {L"1", std::move(keys)};
        d.timelineEvents.push_back({Name(L"BLUR"), L"Z", Name(L"X")});
        return GapsOf(d);
    };
    const std::string event = "timeline of \"BLUR\": the script has no such envelope\n";
    EXPECT_EQ(withKeys({{L"0", L"1.0", Name(L"HOLD"), L"0.0", L"0.0"}}), "");
    EXPECT_EQ(withKeys({}), "envelope \"X\": an envelope has at least one key\n" + event);
    EXPECT_EQ(withKeys({{L"0", L"2", Name(L"HOLD"), L"0.0", L"0.0"}}),
              "envelope \"X\": the last key's value is always 1.0\n" + event);
    EXPECT_EQ(withKeys({{L"0", L"1.0", Name(L"WOBBLE"), L"0.0", L"0.0"}}),
              "envelope \"X\": a key of unknown kind\n" + event);
    EXPECT_EQ(withKeys({{L"0", L"1.0", Name(L"HOLD"), L"1", L"0.0"}}),
              "envelope \"X\": HERMITE keys alone have parameters\n" + event);
    EXPECT_EQ(withKeys({{L"nan", L"1.0", Name(L"HOLD"), L"0.0", L"0.0"}}),
              "envelope \"X\": no statement reads so\n" + event);
    CompositionDescription d = Plain();
    d.timelineEvents.push_back({Name(L"BLUR"), L"RADIUS", Name(L"E")});
    d.timelineEntries.push_back({Name(L"BLUR"), L"A", L"1e5", compositions::kNumber});
    d.timelineEntries.push_back({Name(L"BLUR"), L"A", L"1", 3});
    d.timelineEntries.push_back({Name(L"BLUR"), L"lower", L"1", compositions::kNumber});
    EXPECT_EQ(GapsOf(d),
              "timeline of \"BLUR\": no value of its kind reads so\n"
              "timeline of \"BLUR\": a value of unknown kind\n"
              "timeline of \"BLUR\", property \"lower\": a script's names are in upper "
              "case\n"
              "timeline of \"BLUR\": an envelope cannot drive what MAPPING drives\n");
}

}  // namespace
