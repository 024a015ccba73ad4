#include "check/DiagnosticKinds.h"

namespace tarnexctl {
namespace {

using enum Severity;

// clang-format off
// C2: why the library refuses a script. Nothing of it can be used.
constexpr DiagnosticKind kRefusalKinds[] = {
    {"C201", kError, "no SETUP section",
     "SETUP must be there (read status 1). It is looked for in the whole script; a header "
     "needs a blank behind its \"]\" and counts in no comment.",
     "[SOURCES]\n"
     "Video = INPUT\n"
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n",
     kLeastScript, true},
    {"C202", kError, "no SOURCES section",
     "SOURCES must be there, be it without a statement (read status 4).",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n",
     kLeastScript, true},
    {"C203", kError, "no EFFECTS section",
     "EFFECTS must be there, be it without a statement (read status 5).",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "[SOURCES]\n"
     "Video = INPUT\n"
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n",
     kLeastScript, true},
    {"C204", kError, "no STRUCTURE section",
     "STRUCTURE must be there (read status 6).",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "[SOURCES]\n"
     "Video = INPUT\n"
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n",
     kLeastScript, true},
    {"C205", kError, "SETUP gives no name",
     "SETUP ended before it came to a NAME that is not empty (read status 3).",
     "[SETUP]\n"
     "CATEGORY = \"Light\"\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"},
    {"C206", kError, "SETUP gives no category",
     "SETUP ended before it came to a CATEGORY that is not empty (read status 3).",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"},
    {"C207", kError, "STRUCTURE does not open with OUTPUT =",
     "The first thing behind the header is OUTPUT = (read status 7).",
     "[STRUCTURE]\n"
     "Soften(Video)\n",
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n"},
    {"C208", kError, "STRUCTURE uses a name that nothing declares",
     "Names in STRUCTURE are those of SOURCES and EFFECTS, or MIX (read status 8).",
     "[STRUCTURE]\n"
     "OUTPUT = Sotfen(Video)\n",
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n"},
    {"C209", kError, "IS_FILTER is neither TRUE nor FALSE",
     "No other value is accepted (read status 12).",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "IS_FILTER = YES\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "IS_FILTER = TRUE\n"},
    {"C210", kError, "a \")\" without its \"(\"",
     "Parentheses in STRUCTURE must match (read status 12).",
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video))\n",
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n"},
    {"C211", kError, "a \"(\" that stands behind no name",
     "Parentheses hold what feeds the name directly in front of them (read status 12).",
     "[STRUCTURE]\n"
     "OUTPUT = (Soften(Video))\n",
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n"},
    {"C212", kError, "a \"(\" without its \")\"",
     "Parentheses in STRUCTURE must match (read status 12).",
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video\n",
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n"},
    {"C213", kError, "a filter without exactly one input",
     "A filter works on one picture: with IS_FILTER = TRUE, SOURCES declares one input, with a "
     "number or without (read status 20).",
     "[SETUP]\n"
     "NAME = \"Over\"\n"
     "CATEGORY = \"Light\"\n"
     "IS_FILTER = TRUE\n"
     "[SOURCES]\n"
     "Front = INPUT\n"
     "Back = INPUT\n"
     "[EFFECTS]\n"
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Front, Back)\n",
     "[SETUP]\n"
     "NAME = \"Over\"\n"
     "CATEGORY = \"Light\"\n"
     "IS_FILTER = FALSE\n"
     "[SOURCES]\n"
     "Front = INPUT\n"
     "Back = INPUT\n"
     "[EFFECTS]\n"
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Front, Back)\n"},
};
// clang-format on

}  // namespace

std::span<const DiagnosticKind> RefusalKinds() {
    return kRefusalKinds;
}

}  // namespace tarnexctl
