// tarnexctl plot: envelopes as a table and as a picture.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/Files.h"
#include "compositions/TextForms.h"
#include "compositions/archive/SampleDescriptions.h"
#include "drawing/EnvelopePicture.h"
#include "frame/ExitCode.h"

namespace {

using namespace tooltest;
using tarnexctl::EnvelopePicture;
using tarnexctl::PlainNumber;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string Script(const std::string& envelopes) {
    return "[SETUP]\nNAME = \"n\" CATEGORY = \"c\"\n[SOURCES]\n[EFFECTS]\n[STRUCTURE]\n"
           "OUTPUT = MIX\n[ENVELOPES]\n" +
           envelopes;
}

const std::string kTwo = Script(
    "Rise = {2}, {0, -1.50, linear}, {10, HERMITE, 1, 2.25}\n"
    "Bump = {4.0}, {0, 0, HOLD}, {10, 3, COSINE}, {20, 0, CUBIC}, {40, HOLD}\n");

TEST(Plot, TheTableHoldsThePointsAsWritten) {
    const ScratchFolder scratch;
    const ToolRun run = RunTool({"plot", scratch.Write("a.txt", kTwo)});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out,
              "envelope,count,point,time,value,kind,firstParameter,secondParameter\n"
              "BUMP,4.0,1,0,0,HOLD,0.0,0.0\n"
              "BUMP,4.0,2,10,3,COSINE,0.0,0.0\n"
              "BUMP,4.0,3,20,0,CUBIC,0.0,0.0\n"
              "BUMP,4.0,4,40,1.0,HOLD,0.0,0.0\n"
              "RISE,2,1,0,-1.50,LINEAR,0.0,0.0\n"
              "RISE,2,2,10,1.0,HERMITE,1,2.25\n");
}

TEST(Plot, ThePictureHoldsOrJoinsPointsByTheirKindAndSaysSo) {
    const ScratchFolder scratch;
    const ToolRun run = RunTool({"plot", "--format", "svg", scratch.Write("a.txt", kTwo)});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(XmlProblem(run.out), "");
    EXPECT_THAT(
        XmlTexts(run.out, "title"),
        ElementsAre("n", "BUMP", "0, 0, HOLD", "10, 3, COSINE", "20, 0, CUBIC", "40, 1.0, HOLD",
                    "RISE", "0, -1.50, LINEAR", "10, 1.0, HERMITE, 1, 2.25"));
    EXPECT_THAT(run.out, HasSubstr("What lies between them is the engine's"));
    // BUMP lies from 0 to 40 and from 0 to 3, in a frame of 600 by 130 pixels.
    EXPECT_THAT(run.out, HasSubstr("<path d=\"M120 214 H270 V84\" class=\"held\"/>"));
    EXPECT_THAT(run.out, HasSubstr("<path d=\"M270 84 L420 214\" class=\"joined\"/>"));
    EXPECT_THAT(run.out, HasSubstr("<path d=\"M420 214 L720 171\" class=\"joined\"/>"));
    EXPECT_THAT(run.out, HasSubstr("<path d=\"M120 434 L720 304\" class=\"straight\"/>"));
    EXPECT_THAT(XmlTexts(run.out, "text"),
                ElementsAre("n", "BUMP", "0", "40", "0", "3", "RISE", "0", "10", "-1.50", "1.0",
                            testing::StartsWith("Points as written.")));
}

TEST(Plot, JsonHoldsTheEnvelopesAsADumpDoes) {
    const ScratchFolder scratch;
    const std::string file = scratch.Write("a.txt", kTwo);
    EXPECT_EQ(RunForJson({"plot", file}, 0)["envelopes"],
              RunForJson({"dump", file}, 0)["envelopes"]);
}

TEST(Plot, OneEnvelopeCanBePickedInAnyCaseAndAnUnknownOneIsNotFound) {
    const ScratchFolder scratch;
    const std::string file = scratch.Write("a.txt", kTwo);
    EXPECT_THAT(RunTool({"plot", "-e", "rise", file}).out, Not(HasSubstr("BUMP")));
    EXPECT_EQ(CsvRows(RunTool({"plot", "-e", "rise", "-e", "Bump", file}).out).size(), 7u);
    const ToolRun run = RunTool({"plot", "-e", "Rize", file});
    EXPECT_EQ(run.code, 3);
    EXPECT_THAT(run.err, HasSubstr("did you mean \"RISE\"?"));
}

TEST(Plot, NoEnvelopesAreSaidAndNoFinding) {
    const ScratchFolder scratch;
    const std::string file = scratch.Write("a.txt", Script(""));
    const ToolRun run = RunTool({"plot", file});
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(run.err, HasSubstr("has no envelopes"));
    EXPECT_EQ(CsvRows(run.out).size(), 1u);
    const ToolRun picture = RunTool({"plot", "--format", "svg", file});
    EXPECT_EQ(picture.code, 0);
    EXPECT_EQ(XmlProblem(picture.out), "");
}

TEST(Plot, ANumberWithoutAPlaceIsAFindingOfThePictureAlone) {
    const ScratchFolder scratch;
    const std::string file =
        scratch.Write("a.txt", Script("E = {3}, {0, - 3, LINEAR}, {5, 1, LINEAR}, {9, HOLD}\n"));
    const ToolRun picture = RunTool({"plot", "--format", "svg", file});
    EXPECT_EQ(picture.code, 1);
    EXPECT_THAT(picture.err, HasSubstr("envelope E, point 1: \"- 3\" is no plain number"));
    const ToolRun table = RunTool({"plot", file});
    EXPECT_EQ(table.code, 0);
    EXPECT_EQ(CsvRows(table.out)[1][4], "- 3");
}

TEST(Plot, AnEnvelopesRefusalIsAFinding) {
    const ScratchFolder scratch;
    const ToolRun run =
        RunTool({"plot", scratch.Write("a.txt", kTwo + "Third = {1}, {0, WOBBLE}\n")});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("ENVELOPES ended early: status 17"));
    EXPECT_EQ(CsvRows(run.out).size(), 7u);
}

TEST(Plot, WhateverAnArchiveHoldsGivesAWholeTableAndPicture) {
    const ScratchFolder scratch;
    std::vector<std::string> problems;
    for (unsigned seed = 0; seed < 300; ++seed) {
        const auto description = samples::Generated(seed);
        ASSERT_EQ(XmlProblem(EnvelopePicture("t", description.envelopes, problems)), "") << seed;
    }
    compositions::CompositionDescription odd;
    odd.envelopes[compositions::UpperName::Verbatim(L"A,\"B\"\n<")] = {
        L"=1", {{L"\n", L"\"", {}, L"", L""}}};
    const std::string file = WriteArchiveOf(scratch, "odd", odd);
    const auto rows = CsvRows(RunTool({"plot", file}).out);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_THAT(rows[1], ElementsAre("A,\"B\"\n<", "=1", "1", "\n", "\"", "", "", ""));
    EXPECT_EQ(XmlProblem(RunTool({"plot", "--format", "svg", file}).out), "");
}

TEST(Plot, ExtremeNumbersKeepTheirPlaces) {
    EXPECT_EQ(PlainNumber(L"-12.5"), -12.5);
    EXPECT_EQ(PlainNumber(L"7"), 7.0);
    for (const wchar_t* text : {L"", L"-", L".5", L"5.", L"-.5", L"+1", L"1e5", L"nan", L"inf",
                                L"- 3", L"1.2.3", L"--1", L"1_000", L"0x10"}) {
        EXPECT_FALSE(PlainNumber(text));
    }
    const std::wstring huge = L"1" + std::wstring(308, L'0');
    EXPECT_TRUE(PlainNumber(huge));
    EXPECT_FALSE(PlainNumber(huge + L"0"));
    const auto linear = compositions::UpperName(L"LINEAR");
    compositions::Envelopes envelopes;
    envelopes[linear] = {
        L"2", {{L"-" + huge, L"-" + huge, linear, L"", L""}, {huge, huge, linear, L"", L""}}};
    std::vector<std::string> problems;
    EXPECT_THAT(EnvelopePicture("t", envelopes, problems), HasSubstr("d=\"M120 214 L720 84\""));
    EXPECT_THAT(problems, IsEmpty());
}

TEST(Plot, TooManyPointsForAPictureAreRefused) {
    const ScratchFolder scratch;
    std::string many = "E = {1}";
    for (int i = 0; i < 5000; ++i) many += ", {0, 0, HOLD}";
    const std::string file = scratch.Write("a.txt", Script(many + ", {1, HOLD}\n"));
    const ToolRun run = RunTool({"plot", "--format", "svg", file});
    EXPECT_EQ(run.code, 4);
    EXPECT_THAT(run.err, HasSubstr("5002 envelopes and points are too many"));
    EXPECT_EQ(CsvRows(RunTool({"plot", file}).out).size(), 5002u);
}

TEST(Plot, FilesThatHoldNoCompositionHaveTheirOwnExitCodes) {
    const ScratchFolder scratch;
    const std::string script = scratch.Write("a.txt", kTwo);
    EXPECT_EQ(RunTool({"plot"}).code, 2);
    EXPECT_EQ(RunTool({"plot", script, "-o", script}).code, 2);
    EXPECT_EQ(RunTool({"plot", "no such file"}).code, 3);
    EXPECT_EQ(RunTool({"plot", PathOf(scratch)}).code, 4);
    EXPECT_EQ(RunTool({"plot", scratch.Write("empty", "")}).code, 1);
    EXPECT_EQ(RunTool({"plot", scratch.Write("b", std::string(5000, '\0'))}).code, 4);
    const std::string archive = ArchiveBytesOf(samples::Small());
    EXPECT_EQ(RunTool({"plot", scratch.Write("d", archive.substr(0, 40))}).code, 4);
    EXPECT_EQ(RunTool({"plot", scratch.Write("w", archive)}).code, 0);
}

}  // namespace
