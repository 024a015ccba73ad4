// tarnexctl archive: scripts to archives and back, and what is wrong with an archive.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/CompositionLoader.h"
#include "compositions/Files.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "frame/Text.h"

namespace {

using namespace tooltest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kScript = ReadFile(TARNEX_EXAMPLES "/compositions/elastic_wipe.txt");

std::string Start() {
    return "[SETUP]\nNAME = \"n\" CATEGORY = \"c\"\n[SOURCES]\n[EFFECTS]\n[STRUCTURE]\nOUTPUT = ";
}

TEST(ArchiveCompile, WritesBesideTheScriptWhatTheLibraryReads) {
    const ScratchFolder scratch;
    const std::string script = scratch.Write("wipe \xC3\xA4.txt", kScript);
    const ToolRun run = RunTool({"archive", "compile", script});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_THAT(NamesIn(scratch), ElementsAre("wipe \xC3\xA4.mxf", "wipe \xC3\xA4.txt"));
    const std::string archive = PathOf(scratch) + "/wipe \xC3\xA4.mxf";
    EXPECT_EQ(ReadFile(archive), ArchiveBytesOf(ReadDescription(kScript)));
    EXPECT_THAT(run.out, HasSubstr(": " + std::to_string(ReadFile(archive).size()) + " bytes\n"));
    const auto read = compositions::ReadCompositionArchive(tarnexctl::ToWide(archive));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->GetReadStatus(), 0);
    EXPECT_TRUE(read->GetDescription() == ReadDescription(kScript));
}

TEST(ArchiveCompile, ReplacesAnOlderArchiveAndNoOtherFile) {
    const ScratchFolder scratch;
    const std::string script = scratch.Write("a.txt", kScript);
    const std::string archive = scratch.Write("a.mxf", ArchiveBytesOf(samples::Small()));
    const Json document = RunForJson({"archive", "compile", script}, 0);
    EXPECT_EQ(document["bytes"], ReadFile(archive).size());
    EXPECT_EQ(ReadFile(archive), ArchiveBytesOf(ReadDescription(kScript)));
    scratch.Write("a.mxf", "somebody's film");
    const ToolRun run = RunTool({"archive", "compile", script});
    EXPECT_EQ(run.code, 4);
    EXPECT_THAT(run.err, HasSubstr("is no archive: it is not replaced"));
    EXPECT_EQ(ReadFile(archive), "somebody's film");
    EXPECT_EQ(RunTool({"archive", "compile", script, "-o", PathOf(scratch)}).code, 4);
    EXPECT_EQ(RunTool({"archive", "compile", script, "-o", PathOf(scratch) + "/x/y.mxf"}).code, 3);
    EXPECT_EQ(RunTool({"archive", "compile", script, "-o", PathOf(scratch) + "/y.mxf"}).code, 0);
    EXPECT_THAT(NamesIn(scratch), ElementsAre("a.mxf", "a.txt", "y.mxf"));
}

TEST(ArchiveCompile, NeverOverwritesTheScript) {
    const ScratchFolder scratch;
    const std::string script = scratch.Write("a.mxf", kScript);
    EXPECT_EQ(RunTool({"archive", "compile", script}).code, 2);
    EXPECT_EQ(RunTool({"archive", "compile", script, "-o", script}).code, 2);
    EXPECT_EQ(ReadFile(script), kScript);
}

TEST(ArchiveCompile, ARefusedScriptGetsNoArchive) {
    const ScratchFolder scratch;
    const std::string script = scratch.Write("a.txt", Start() + "Nowhere\n");
    const ToolRun run = RunTool({"archive", "compile", script});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("status 8"));
    EXPECT_THAT(run.err, HasSubstr("no archive is written"));
    EXPECT_EQ(RunForJson({"archive", "compile", script}, 1)["readStatus"], 8);
    EXPECT_THAT(NamesIn(scratch), ElementsAre("a.txt"));
}

TEST(ArchiveCompile, ASectionThatEndedEarlyIsAFindingAndCompilesAllTheSame) {
    const ScratchFolder scratch;
    const std::string script =
        scratch.Write("a.txt", Start() + "MIX\n[MAPPING]\n\"x\" = Nowhere.\"y\"\n");
    const ToolRun run = RunTool({"archive", "compile", script});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("MAPPING ended early: status 13"));
    EXPECT_THAT(NamesIn(scratch), ElementsAre("a.mxf", "a.txt"));
}

TEST(ArchiveInspect, ShowsTheHeaderAndWhatEachFieldHolds) {
    const ScratchFolder scratch;
    const std::string archive = WriteArchiveOf(scratch, "a.mxf", samples::Documented());
    const Json document = RunForJson({"archive", "inspect", archive}, 0);
    EXPECT_EQ(document["version"], 2);
    EXPECT_EQ(document["bytes"], 0x2f8);
    ASSERT_EQ(document["fields"].size(), 17u);
    EXPECT_EQ(document["fields"][9],
              Json::parse(R"({"field": "structure", "offset": 490, "bytes": 126, "holds": 4})"));
    EXPECT_EQ(document["fields"][10]["holds"], "Soft Logo");
    EXPECT_EQ(document["fields"][14]["holds"], false);
    EXPECT_EQ(document["fields"][15]["holds"], -2);
    const ToolRun run = RunTool({"archive", "inspect", archive});
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(run.out, HasSubstr(": archive, version 2, 760 bytes\n"));
    EXPECT_THAT(run.out, HasSubstr("\n   490    126  structure         4\n"));
    EXPECT_THAT(run.out, HasSubstr("\n   616     26  name              \"Soft Logo\"\n"));
    const std::string longer = scratch.Write("b.mxf", ReadFile(archive) + "xyz");
    EXPECT_EQ(RunForJson({"archive", "inspect", longer}, 0)["bytesBehind"], 3);
}

TEST(ArchiveVerify, AWholeArchiveIsFine) {
    const ScratchFolder scratch;
    const std::string archive = WriteArchiveOf(scratch, "a", ReadDescription(kScript));
    const ToolRun run = RunTool({"archive", "verify", archive});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, archive + ": whole\n");
    EXPECT_THAT(RunForJson({"archive", "verify", archive}, 0)["findings"], IsEmpty());
}

// The library's part of the work is tested at every byte by ArchiveReading.
TEST(ArchiveVerify, NamesTheFirstBadByteOfDamagedArchives) {
    const ScratchFolder scratch;
    const plain::File file = plain::Write(samples::Small());
    for (std::size_t size = 0; size < file.bytes.size(); size += 1 + file.bytes.size() / 12) {
        const std::string cut = scratch.Write("cut", file.bytes.substr(0, size));
        const Json document = RunForJson({"archive", "verify", cut}, 1);
        EXPECT_EQ(document["damaged"], true);
        ASSERT_EQ(document["findings"].size(), 1u);
        EXPECT_LE(document["findings"][0]["offset"], size);
        EXPECT_EQ(document["findings"][0]["level"], "error");
    }
    std::string absurd = file.bytes;
    absurd[file.counts[3] + 7] = '\x7F';
    const ToolRun run = RunTool({"archive", "verify", scratch.Write("absurd", absurd)});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.out,
                HasSubstr(": byte " + std::to_string(file.counts[3]) + ": error: a count"));
    EXPECT_THAT(RunTool({"archive", "verify", scratch.Write("no", "Script archive")}).out,
                HasSubstr(": byte 6: error: this is not an archive's signature"));
    EXPECT_EQ(RunTool({"archive", "verify", scratch.Write("empty", "")}).code, 1);
}

TEST(ArchiveVerify, WhatNoScriptGivesIsAFindingAndWhatOthersMayWriteANote) {
    const ScratchFolder scratch;
    compositions::CompositionDescription d = ReadDescription(kScript);
    d.category = L"";
    d.isFilter = true;
    const Json found =
        RunForJson({"archive", "verify", WriteArchiveOf(scratch, "a", d)}, 1)["findings"];
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0]["text"], "the category is empty");
    EXPECT_EQ(found[1]["text"], "a filter with 2 inputs");

    std::string other = ArchiveBytesOf(ReadDescription(kScript));
    other[14] = 3;
    other.back() = 7;  // true in another spelling
    const std::string file = scratch.Write("b", other + "tail");
    const Json notes = RunForJson({"archive", "verify", file}, 0)["findings"];
    ASSERT_EQ(notes.size(), 3u);
    EXPECT_EQ(notes[0]["offset"], 14);
    EXPECT_EQ(notes[1]["offset"], other.size() - 1);
    EXPECT_EQ(notes[2]["offset"], other.size());
    for (const Json& note : notes) EXPECT_EQ(note["level"], "note");
}

TEST(ArchiveExtract, EveryExampleComesBackThroughTheProgram) {
    const ScratchFolder scratch;
    for (const std::string& path : ExampleScripts()) {
        const auto description = ReadDescription(ReadFile(path));
        const ToolRun run =
            RunTool({"archive", "extract", WriteArchiveOf(scratch, "a.mxf", description)});
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(ArchiveBytesOf(ReadDescription(run.out)), ArchiveBytesOf(description)) << path;
    }
}

TEST(ArchiveExtract, BytesThatAreNoTextNeedAFile) {
    const ScratchFolder scratch;
    const std::string script =
        "[SETUP]\nNAME = \"n\xE4\xFF\"\nCATEGORY = \"c\"\n\n[SOURCES]\n\n[EFFECTS]\n\n"
        "[STRUCTURE]\nOUTPUT =\n";
    const std::string archive = WriteArchiveOf(scratch, "a.mxf", ReadDescription(script));
    const ToolRun run = RunTool({"archive", "extract", archive});
    EXPECT_EQ(run.code, 4);
    EXPECT_THAT(run.err, HasSubstr("--output writes them to a file as they are"));
    const std::string output = PathOf(scratch) + "/back.txt";
    EXPECT_EQ(RunTool({"archive", "extract", archive, "-o", output}).code, 0);
    EXPECT_EQ(ReadFile(output), script);
    EXPECT_EQ(RunTool({"archive", "extract", archive, "-o", archive}).code, 2);
}

TEST(ArchiveExtract, WhatNoScriptCanSayIsNamed) {
    const ScratchFolder scratch;
    const std::string archive = WriteArchiveOf(scratch, "a.mxf", samples::Documented());
    const ToolRun run = RunTool({"archive", "extract", archive});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("no script can say media source \"LOGO\": a path of one part"));
    EXPECT_EQ(RunForJson({"archive", "extract", archive}, 1)["gaps"].size(), 3u);
}

TEST(Archive, CommandLinesAndFilesThatMakeNoSenseHaveTheirOwnExitCodes) {
    const ScratchFolder scratch;
    const std::string script = scratch.Write("a.txt", kScript);
    const std::string archive = scratch.Write("w", ArchiveBytesOf(samples::Small()));
    const std::string damaged = scratch.Write("d", ArchiveBytesOf(samples::Small()).substr(0, 40));
    EXPECT_EQ(RunTool({"archive"}).code, 2);
    EXPECT_EQ(RunTool({"archive", "compile"}).code, 2);
    EXPECT_EQ(RunTool({"archive", "burn", script}).code, 2);
    EXPECT_EQ(RunTool({"archive", "inspect", archive, "-o", "x"}).code, 2);
    for (const char* action : {"compile", "inspect", "verify", "extract"}) {
        EXPECT_EQ(RunTool({"archive", action, "no such file"}).code, 3) << action;
        EXPECT_EQ(RunTool({"archive", action, PathOf(scratch)}).code, 4) << action;
    }
    EXPECT_EQ(RunTool({"archive", "compile", archive}).code, 4);
    EXPECT_EQ(RunTool({"archive", "compile", damaged}).code, 4);
    EXPECT_EQ(RunTool({"archive", "compile", scratch.Write("b", std::string(50, '\0'))}).code, 4);
    EXPECT_EQ(RunTool({"archive", "compile", scratch.Write("e", "")}).code, 1);
    for (const char* action : {"inspect", "extract"}) {
        EXPECT_EQ(RunTool({"archive", action, script}).code, 4) << action;
        EXPECT_EQ(RunTool({"archive", action, scratch.Write("e", "")}).code, 4) << action;
        const ToolRun run = RunTool({"archive", action, damaged});
        EXPECT_EQ(run.code, 4) << action;
        EXPECT_THAT(run.err, HasSubstr("is a damaged archive: byte "));
    }
    const std::string huge = scratch.Write("huge", std::string(100'000'000, 'x'));
    EXPECT_EQ(RunTool({"archive", "compile", huge}).code, 4);
    EXPECT_EQ(RunTool({"archive", "verify", huge}).code, 1);
    EXPECT_EQ(RunTool({"archive", "extract", huge}).code, 4);
}

}  // namespace
