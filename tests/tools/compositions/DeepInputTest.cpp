// Everything of the program that walks a script, an archive or a structure, on a stack of 256 KiB:
// inputs so deep, or of so many elements, that a call for each would not fit, however small.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Tool.h"
#include "frame/Run.h"
#include "frame/Text.h"
#include "support/SmallStack.h"

namespace {

using tooltest::ScratchFolder;

int Levels() {
    return std::getenv("TARNEX_LONG_TESTS") != nullptr ? 1'000'000 : 15'000;
}

std::string Repeated(const std::string& piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += piece;
    return text;
}

// Nodes within nodes; without an end when it is not `closed`.
std::string Nested(bool closed) {
    return "[SETUP]\nNAME = \"N\"\nCATEGORY = \"C\"\n[SOURCES]\nBack = INPUT\n[EFFECTS]\nE = "
           "\"e\"\n[STRUCTURE]\nOUTPUT = E" +
           Repeated("(E", Levels()) + (closed ? Repeated(")", Levels()) : "") + "\n";
}

class DeepInput : public testing::Test {
protected:
    // What it prints goes nowhere: a million levels make a long report.
    int Run(const std::vector<std::string>& arguments) {
        int code = -1;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        RunOnSmallStack([&] { code = tarnexctl::Run(arguments); });
        testing::internal::GetCapturedStdout();
        testing::internal::GetCapturedStderr();
        return code;
    }
    std::string Output(const std::string& name) const {
        return tarnexctl::FromPath(folder_.Path() / name);
    }

    ScratchFolder folder_;
    const std::string script_ = folder_.Write("deep.txt", Nested(true));
};

TEST_F(DeepInput, ScriptIsCheckedDumpedAndDrawn) {
    EXPECT_EQ(Run({"check", script_}), 0);
    EXPECT_EQ(Run({"dump", "-o", Output("deep.json"), script_}), 0);
    EXPECT_EQ(Run({"graph", "-o", Output("deep.dot"), script_}), 0);
    // A picture of it would help nobody: it is refused, whole.
    EXPECT_EQ(Run({"graph", "-o", Output("deep.svg"), script_}), 4);
    EXPECT_EQ(Run({"plot", "-o", Output("deep.plot.svg"), script_}), 0);
}

TEST_F(DeepInput, ScriptThatNeverClosesIsChecked) {
    const std::string open = folder_.Write("open.txt", Nested(false));
    EXPECT_EQ(Run({"check", open}), 1);
    EXPECT_EQ(Run({"dump", "-o", Output("open.json"), open}), 1);
    EXPECT_EQ(Run({"graph", "-o", Output("open.dot"), open}), 1);
}

TEST_F(DeepInput, ArchiveIsCompiledInspectedVerifiedDumpedAndExtracted) {
    const std::string archive = Output("deep.mxf");
    ASSERT_EQ(Run({"archive", "compile", "-o", archive, script_}), 0);
    EXPECT_EQ(Run({"archive", "inspect", archive}), 0);
    EXPECT_EQ(Run({"archive", "verify", archive}), 0);
    EXPECT_EQ(Run({"dump", "-o", Output("deep.json"), archive}), 0);
    EXPECT_EQ(Run({"graph", "-o", Output("deep.dot"), archive}), 0);
    EXPECT_EQ(Run({"archive", "extract", "-o", Output("again.txt"), archive}), 0);
}

// --- Many elements -------------------------------------------------------------------------------

std::size_t Elements() {
    return std::getenv("TARNEX_LONG_TESTS") != nullptr ? 60'000 : 2000;
}

// `statement` once for each element, with its number wherever there is a '#'.
std::string Numbered(const std::string& statement) {
    std::string text;
    for (std::size_t i = 0; i < Elements(); ++i) {
        for (const char c : statement) {
            if (c == '#') {
                text += std::to_string(i);
            } else {
                text += c;
            }
        }
    }
    return text;
}

struct Wide {
    const char* name;
    std::string setup = {};
    std::string sources = {};
    std::string effects = {};
    std::string structure = "OUTPUT = E0(Back)\n";
    std::string rest = {};
    bool drawn = false;
};

std::vector<Wide> EverySection() {
    return {
        {.name = "setup", .setup = Numbered("%V#% = REGS : {\"Key\", \"N#\"}\n")},
        {.name = "sources", .sources = Numbered("S# = INPUT\n")},
        {.name = "media", .sources = Numbered("M# = BITMAP : \"a.bmp\"\n")},
        {.name = "effects", .effects = Numbered("F# = \"blur\"\n")},
        {.name = "structure",
         .structure = "OUTPUT = MIX(" + Numbered("E0(Back), ") + "E0(Back))\n",
         .drawn = true},
        {.name = "properties", .rest = "[PROPERTIES]\n" + Numbered("READ \"P#\" = 1\n")},
        {.name = "mapping",
         .rest = "[PROPERTIES]\nREAD WRITE \"P\" = 1\n[MAPPING]\n" +
                 Numbered("READ WRITE \"P\" = E0.\"Q#\"\n")},
        {.name = "envelopes",
         .rest = "[ENVELOPES]\n" + Numbered("N# = {1}, {0, 1.0, LINEAR}, {9, HOLD}\n"),
         .drawn = true},
        {.name = "keys",
         .rest = "[ENVELOPES]\nN = {1}, " + Numbered("{#, 1.0, LINEAR}, ") + "{99999, HOLD}\n",
         .drawn = true},
        {.name = "timeline", .rest = "[TIMELINE]\n" + Numbered("E0.\"Q#\" = 1.5\n"), .drawn = true},
        {.name = "targets", .rest = "[TIMELINE]\n" + Numbered("E0.\"Q#\", ") + "E0.\"Q\" = 1.5\n"},
    };
}

TEST_F(DeepInput, SectionsOfManyElementsAreWalked) {
    for (const Wide& wide : EverySection()) {
        SCOPED_TRACE(wide.name);
        const std::string script =
            folder_.Write("wide.txt", "[SETUP]\nNAME = \"N\"\nCATEGORY = \"C\"\n" + wide.setup +
                                          "[SOURCES]\nBack = INPUT\n" + wide.sources +
                                          "[EFFECTS]\nE0 = \"blur\"\n" + wide.effects +
                                          "[STRUCTURE]\n" + wide.structure + wide.rest);
        EXPECT_LE(Run({"check", script}), 1);  // there may be something to say of it
        EXPECT_EQ(Run({"dump", "-o", Output("wide.json"), script}), 0);
        const std::string archive = Output("wide.mxf");
        EXPECT_EQ(Run({"archive", "compile", "-o", archive, script}), 0);
        // Else they were not read at all.
        EXPECT_GT(std::filesystem::file_size(folder_.Path() / "wide.mxf"), 8u * Elements());
        EXPECT_EQ(Run({"archive", "extract", "-o", Output("again.txt"), archive}), 0);
        if (!wide.drawn) continue;
        EXPECT_EQ(Run({"graph", "-o", Output("wide.dot"), script}), 0);
        // Too many curves are refused, whole.
        EXPECT_THAT(Run({"plot", "-o", Output("wide.svg"), script}), testing::AnyOf(0, 4));
    }
}

}  // namespace
