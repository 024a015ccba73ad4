#include "check/DiagnosticKinds.h"

namespace tarnexctl {
namespace {

using enum Severity;

// clang-format off
// C4: statements that lose something, or end a section that stops nothing else.
constexpr DiagnosticKind kStatementKinds[] = {
    {"C401", kError, "EXPENSIVE behind ENVELOPED",
     "An expensive property can never be enveloped. The statement and all behind it in its "
     "section are dropped.",
     "[PROPERTIES]\n"
     "READ ENVELOPED EXPENSIVE \"Radius\" = 4\n",
     "[PROPERTIES]\n"
     "READ WRITE ENVELOPED \"Radius\" = 4\n"},
    {"C402", kError, "ENVELOPED behind EXPENSIVE",
     "An expensive property can never be enveloped. The statement and all behind it in its "
     "section are dropped.",
     "[PROPERTIES]\n"
     "READ EXPENSIVE ENVELOPED \"Radius\" = 4\n",
     "[PROPERTIES]\n"
     "READ WRITE EXPENSIVE \"Radius\" = 4\n"},
    {"C403", kError, "a mapping to an effect that nothing declares",
     "Targets are effects of EFFECTS. This target, those in front of it in its statement and "
     "all statements behind are dropped.",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Sotfen.\"Radius\"\n",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Soften.\"Radius\"\n"},
    {"C404", kError, "one target twice for one property",
     "A property drives a target once. The second time, what stands in front of it in its "
     "statement and all statements behind are dropped.",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Soften.\"Radius\", Soften.\"Radius\"\n",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Soften.\"Radius\", Soften.\"Passes\"\n"},
    {"C405", kError, "an envelope that is there twice",
     "The first envelope of a name stays. The second one and all behind it are dropped.",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR}, {25, HOLD}\n"
     "fade = {2}, {0, 1, LINEAR}, {50, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n"},
    {"C406", kError, "an envelope key of unknown kind",
     "The kinds are LINEAR, COSINE, CUBIC, HERMITE and HOLD. The envelope and all behind it "
     "are dropped.",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEER}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n"},
    {"C407", kError, "a value that is no envelope",
     "A word in the place of a value is an envelope's name, TRUE and FALSE included. TIMELINE "
     "ends at one that ENVELOPES does not declare.",
     "[TIMELINE]\n"
     "Soften.\"Enabled\" = TRUE\n",
     "[TIMELINE]\n"
     "Soften.\"Enabled\" = 1\n"},
    {"C408", kError, "an envelope for a property that MAPPING drives",
     "The host sets a mapped property, so no envelope can; a fixed value is allowed. The "
     "statement and all behind it are dropped.",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Soften.\"Radius\"\n"
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Soften.\"Passes\"\n"
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n"},
    {"C409", kWarning, "a word that takes a property's name",
     "In front of the name stand access words: READ, WRITE, EXPENSIVE, ENVELOPED, "
     "NO_INTERPOLATION. Any other word becomes the property's name, and the name its value.",
     "[PROPERTIES]\n"
     "READ WRIET \"Radius\" = 4\n",
     "[PROPERTIES]\n"
     "READ WRITE \"Radius\" = 4\n"},
    {"C410", kWarning, "a property's name that reads as an access word",
     "A name that is an access word is taken for one, and the value takes its place.",
     "[PROPERTIES]\n"
     "READ \"Write\" = 4\n",
     "[PROPERTIES]\n"
     "READ \"Write back\" = 4\n"},
    {"C411", kWarning, "a word that is no access word",
     "MAPPING passes over words that it does not know. The flag is not set.",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRIET \"Size\" = Soften.\"Radius\"\n",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Soften.\"Radius\"\n"},
    {"C412", kWarning, "a timeline target that nothing declares",
     "The value is kept for an effect that is not there: nothing will use it.",
     "[TIMELINE]\n"
     "Sotfen.\"Radius\" = 4\n",
     "[TIMELINE]\n"
     "Soften.\"Radius\" = 4\n"},
    {"C413", kWarning, "a variable that SETUP does not declare",
     "Variables are declared with REGS. In a path an unknown one is plain text, in upper case.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "%Folder% = REGS : {\"Software\\Studio\", \"Folder\"}\n"
     "[TIMELINE]\n"
     "Soften.\"Mask\" = %Foldr%\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "%Folder% = REGS : {\"Software\\Studio\", \"Folder\"}\n"
     "[TIMELINE]\n"
     "Soften.\"Mask\" = %Folder%\n"},
    {"C414", kWarning, "a path that is a single variable",
     "A path of one part is never looked up: the variable's own name is the path. Join it with "
     "\"+\" to a text.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "%Logo% = REGS : {\"Software\\Studio\", \"Logo\"}\n"
     "[SOURCES]\n"
     "Video = INPUT\n"
     "Logo = BITMAP : %Logo%\n"
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Soften(Video), Logo)\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "%Folder% = REGS : {\"Software\\Studio\", \"Folder\"}\n"
     "[SOURCES]\n"
     "Video = INPUT\n"
     "Logo = BITMAP : %Folder% + \"\\logo.png\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Soften(Video), Logo)\n"},
};
// clang-format on

}  // namespace

std::span<const DiagnosticKind> StatementKinds() {
    return kStatementKinds;
}

}  // namespace tarnexctl
