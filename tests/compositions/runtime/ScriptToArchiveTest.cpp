// A script, the archive written of it and the reading of that archive give equal descriptions.

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "compositions/CompositionLoader.h"
#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/TempFolder.h"
#include "platform/FileMove.h"

namespace {

using namespace compositions;

// Scripts of every section with everything in them chosen by the seed.
class ScriptGenerator {
public:
    explicit ScriptGenerator(unsigned seed) : random_(seed) {}

    std::string Next() {
        const unsigned inputs = 1 + Below(4);
        const unsigned effects = 1 + Below(5);
        std::string text = Setup() + Sources(inputs) + Effects(effects);
        text += "[STRUCTURE]\nOUTPUT = " + Node(inputs, effects, 4) + "\n[PROPERTIES]\n";
        Repeat([&](unsigned i) { text += Access() + Quoted("p", i) + " = " + Value() + "\n"; });
        text += "[MAPPING]\n";
        Repeat([&](unsigned i) { text += Access() + Quoted("p", i) + " = " + Target(effects, i); });
        text += "[ENVELOPES]\n";
        Repeat(
            [&](unsigned i) { text += "Env" + std::to_string(i) + " = { 2 }, " + Keys() + "\n"; });
        text += "[TIMELINE]\n";
        Repeat([&](unsigned i) {
            text += "E" + std::to_string(Below(effects)) + "." + Quoted("t", i) + " = " +
                    (Below(2) == 0 ? "Env0" : Value()) + "\n";
        });
        return text;
    }

private:
    unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
    template <class Step>
    void Repeat(Step step) {
        const unsigned count = Below(5);
        for (unsigned i = 0; i < count; ++i) step(i);
    }
    std::string Quoted(const std::string& stem, unsigned number) {
        return "\"" + stem + std::to_string(number) + (Below(3) == 0 ? " \xE9\"" : "\"");
    }
    std::string Access() {
        const char* words[] = {"READ ", "WRITE ", "READ WRITE ", "Enveloped ", "EXPENSIVE "};
        return words[Below(5)];
    }
    std::string Value() {
        const char* values[] = {"0.5", "12", "-3", "\"text\"", "TRUE"};
        return values[Below(5)];
    }
    std::string Setup() {
        std::string text = "[SETUP]\nNAME = " + Quoted("Name", Below(100)) +
                           "\nCATEGORY = \"Cat\"\nSPEED = " + std::to_string(Below(9)) + "\n";
        if (Below(2) == 0) text += "SWAP = TRUE\n";
        Repeat([&](unsigned i) {
            text += "%key" + std::to_string(i) + "% = REGS : { \"Path\", \"Value\"" +
                    (Below(2) == 0 ? ", \"Third\" }\n" : " }\n");
        });
        return text;
    }
    std::string Sources(unsigned inputs) {
        std::string text = "[SOURCES]\n";
        for (unsigned i = 0; i < inputs; ++i) text += "In" + std::to_string(i) + " = INPUT\n";
        Repeat([&](unsigned i) {
            text += "Number" + std::to_string(i) + " = " + std::to_string(Below(9)) + "\n";
        });
        Repeat([&](unsigned i) {
            text += "Media" + std::to_string(i) + (Below(2) == 0 ? " = BITMAP : " : " = MOVIE : ");
            text += Below(2) == 0 ? "\"File.png\"\n" : "%key0% + \"\\file.png\"\n";
        });
        return text;
    }
    std::string Effects(unsigned effects) {
        std::string text = "[EFFECTS]\n";
        for (unsigned i = 0; i < effects; ++i) {
            text += "E" + std::to_string(i) + " = " + Quoted("Effect", i) + "\n";
        }
        Repeat([&](unsigned i) { text += "Sum" + std::to_string(i) + " = MIX\n"; });
        return text;
    }
    std::string Node(unsigned inputs, unsigned effects, unsigned depth) {
        if (depth == 0 || Below(3) == 0) return "In" + std::to_string(Below(inputs));
        std::string text = Below(3) == 0 ? "MIX" : "E" + std::to_string(Below(effects));
        text += "( " + Node(inputs, effects, depth - 1);
        while (Below(2) == 0) text += ", " + Node(inputs, effects, depth - 1);
        return text + " )";
    }
    std::string Target(unsigned effects, unsigned number) {
        return "E" + std::to_string(Below(effects)) + "." + Quoted("m", number) + "\n";
    }
    std::string Keys() { return "{ 0, 0.5, LINEAR }, { 10, 1, HERMITE, 0.1, 0.2 }, { 25, HOLD }"; }

    std::mt19937 random_;
};

void ExpectArchiveReadsAsScript(const std::wstring& script, const std::wstring& archive) {
    const auto read = ReadCompositionScript(script);
    ASSERT_EQ(read->GetReadStatus(), status::kRead);
    {
        ScriptArchive saving(archive, false);
        ASSERT_TRUE(saving.serialize(read->GetDescription()));
        ASSERT_TRUE(saving.Close());
    }
    const auto loaded = ReadCompositionArchive(archive);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->GetReadStatus(), status::kRead);
    EXPECT_TRUE(loaded->GetDescription() == read->GetDescription());
    // Equal mappings may differ in their flags, which their comparison leaves out.
    EXPECT_TRUE(plain::Of(loaded->GetDescription()) == plain::Of(read->GetDescription()));
    EXPECT_TRUE(plain::Read(ReadBytes(platform::StreamPath(archive))).description ==
                plain::Of(read->GetDescription()));
}

// How many records of each container the scripts gave, fields that are not lists as 0 or 1.
class RecordCounts {
public:
    void Add(const CompositionScript& read) {
        bool isFlagged = false;
        bool hasThird = false;
        for (const auto& [key, source] : read.GetMediaSources()) {
            for (const MediaItem& item : source.items) isFlagged |= item.isRegistryValue;
        }
        for (const auto& [key, value] : read.GetRegistryValues()) hasThird |= !value.third.empty();
        Count("inputs", read.GetInputs().size());
        Count("numbered inputs", read.GetNumberedInputs().size());
        Count("media sources", read.GetMediaSources().size());
        Count("registry media items", isFlagged);
        Count("effect instances", read.GetEffectInstances().size());
        Count("mixes", read.GetMixes().size());
        Count("mappings", read.GetMappings().size());
        Count("properties", read.GetProperties().size());
        Count("envelopes", read.GetEnvelopes().size());
        Count("timeline entries", read.GetTimelineEntries().size());
        Count("timeline events", read.GetTimelineEvents().size());
        Count("structure", read.GetStructure().inputs.size());
        Count("registry values", read.GetRegistryValues().size());
        Count("third registry texts", hasThird);
        Count("swap", read.GetSwap());
        Count("speed", read.GetSpeed() != 0);
    }
    void ExpectPlenty() const {
        for (const auto& [name, count] : counts_) {
            EXPECT_GE(count, 50u) << name << ": the scripts hold too little to show anything";
        }
    }

private:
    void Count(const std::string& name, std::size_t count) { counts_[name] += count; }

    std::map<std::string, std::size_t> counts_;
};

TEST(ScriptToArchive, EveryExampleReadsTheSameFromItsArchive) {
    TempFolder folder;
    unsigned count = 0;
    const auto examples = std::filesystem::path(TARNEX_SOURCE_DIR) / "examples" / "compositions";
    for (const auto& entry : std::filesystem::directory_iterator(examples)) {
        if (entry.path().extension() != ".txt") continue;
        SCOPED_TRACE(entry.path().filename().string());
        ++count;
        ExpectArchiveReadsAsScript(TempFolder::WidePath(entry.path()), folder.Wide("a.mxf"));
    }
    EXPECT_GE(count, 12u);
}

TEST(ScriptToArchive, GeneratedScriptsReadTheSameFromTheirArchives) {
    TempFolder folder;
    ScriptGenerator generator(1);
    RecordCounts counts;
    for (int i = 0; i < 200; ++i) {
        const std::string text = generator.Next();
        WriteBytes(folder / "a.txt", text);
        ExpectArchiveReadsAsScript(folder.Wide("a.txt"), folder.Wide("a.mxf"));
        if (::testing::Test::HasFailure()) FAIL() << text;
        counts.Add(*ReadCompositionScript(folder.Wide("a.txt")));
    }
    counts.ExpectPlenty();
}

TEST(ScriptToArchive, DamagedArchiveHasAStatusOfItsOwn) {
    TempFolder folder;
    WriteBytes(folder / "a.mxf", std::string("ScriptArchive\0\2\0\0\0", 18));
    const auto loaded = ReadCompositionArchive(folder.Wide("a.mxf"));
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->GetReadStatus(), kDamagedArchive);
    EXPECT_STREQ(ReadStatusText(kDamagedArchive), ReadStatusText(12345));  // none of the reader's
}

TEST(ScriptToArchive, WhatIsNoArchiveGivesNoReader) {
    TempFolder folder;
    WriteBytes(folder / "a.txt", "[SETUP]");
    WriteBytes(folder / "old.mxf", std::string("ScriptArchive\0\0\0\0\0", 18));
    EXPECT_EQ(ReadCompositionArchive(folder.Wide("a.txt")), nullptr);
    EXPECT_EQ(ReadCompositionArchive(folder.Wide("old.mxf")), nullptr);
    EXPECT_EQ(ReadCompositionArchive(folder.Wide("none")), nullptr);
    EXPECT_EQ(ReadCompositionArchive(folder.Wide("")), nullptr);
}

}  // namespace
