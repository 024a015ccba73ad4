// Everything of the program that walks a script, an archive or a structure, on a stack of 256 KiB:
// inputs so deep that a call for each level would not fit, however small.

#include <gtest/gtest.h>

#include <cstdlib>
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

}  // namespace
