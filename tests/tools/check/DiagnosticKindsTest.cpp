// Every code that `check` knows, against its own examples.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "check/DiagnosticKinds.h"
#include "check/ScriptCheck.h"
#include "frame/Text.h"

namespace {

using namespace tarnexctl;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

// What needs several files at once.
bool IsAboutSeveralFiles(const DiagnosticKind& kind) {
    return std::string_view(kind.code) == "C104";
}

std::vector<std::string> CodesIn(const std::string& script) {
    const ScriptVerdict verdict = ScriptChecker().Check(script);
    std::vector<std::string> codes;
    for (const Diagnostic& diagnostic : verdict.diagnostics.List()) {
        codes.push_back(diagnostic.kind->code);
        EXPECT_TRUE(IsValidUtf8(diagnostic.message)) << diagnostic.message;
        EXPECT_LE(diagnostic.range.begin, diagnostic.range.end);
        EXPECT_LE(diagnostic.range.end, std::max<std::size_t>(script.size(), 1));
    }
    return codes;
}

TEST(DiagnosticKinds, CodesAreUniqueInOrderAndExplained) {
    std::string before;
    for (const DiagnosticKind& kind : DiagnosticKinds()) {
        EXPECT_LT(before, kind.code);
        before = kind.code;
        EXPECT_EQ(FindDiagnosticKind(kind.code), &kind);
        EXPECT_STRNE(kind.title, "");
        EXPECT_STRNE(kind.meaning, "");
        EXPECT_NE(kind.right, "");
        EXPECT_EQ(FindFindingKind(kind.code), nullptr);
    }
    EXPECT_EQ(FindDiagnosticKind("C999"), nullptr);
}

TEST(DiagnosticKinds, WrongExampleRaisesItsCode) {
    for (const DiagnosticKind& kind : DiagnosticKinds()) {
        if (IsAboutSeveralFiles(kind)) continue;
        const std::string script = CompletedExample(kind, kind.wrong);
        EXPECT_THAT(CodesIn(script), Contains(kind.code)) << script;
    }
}

TEST(DiagnosticKinds, RightExampleRaisesNothing) {
    for (const DiagnosticKind& kind : DiagnosticKinds()) {
        const std::string script = CompletedExample(kind, kind.right);
        EXPECT_THAT(CodesIn(script), IsEmpty()) << kind.code << "\n" << script;
        EXPECT_EQ(ScriptChecker().Check(script).readStatus, 0);
    }
}

TEST(DiagnosticKinds, TheManualsTableListsThem) {
    std::ifstream file(ToPath(std::string(TARNEX_DOCS) + "/tarnexctl.md"));
    const std::string manual((std::istreambuf_iterator<char>(file)), {});
    for (const DiagnosticKind& kind : DiagnosticKinds()) {
        const std::string row = std::string("| ") + kind.code + " | " +
                                SeverityName(kind.severity) + " | " + kind.title + " |\n";
        EXPECT_THAT(manual, HasSubstr(row));
    }
}

}  // namespace
