#include "check/DiagnosticKinds.h"

namespace tarnexctl {
namespace {

using enum Severity;

// clang-format off
// C5: what is declared and not used as it should be.
constexpr DiagnosticKind kUseKinds[] = {
    {"C501", kWarning, "an input that is never wired",
     "STRUCTURE does not name it, so the host's picture goes nowhere.",
     "[SOURCES]\n"
     "Video = INPUT\n"
     "Mask = INPUT\n",
     "[SOURCES]\n"
     "Video = INPUT\n"
     "Mask = INPUT\n"
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Soften(Video), Mask)\n"},
    {"C502", kWarning, "an effect that is never wired",
     "STRUCTURE does not name it: it is made and does nothing.",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "Sharpen = \"Sharpen\\Video\"\n",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "Sharpen = \"Sharpen\\Video\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = Sharpen(Soften(Video))\n"},
    {"C503", kWarning, "a media source that is never wired",
     "STRUCTURE does not name it: it is opened and never seen.",
     "[SOURCES]\n"
     "Video = INPUT\n"
     "Logo = BITMAP : \"logo.png\"\n",
     "[SOURCES]\n"
     "Video = INPUT\n"
     "Logo = BITMAP : \"logo.png\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Soften(Video), Logo)\n"},
    {"C504", kWarning, "a mix that is never wired",
     "STRUCTURE does not name it. The word MIX in STRUCTURE makes a mix of its own each time.",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "Join = MIX\n",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "Join = MIX\n"
     "[STRUCTURE]\n"
     "OUTPUT = Join(Video, Soften(Video))\n"},
    {"C505", kWarning, "a mix of fewer than two",
     "A mix joins what feeds it. With one source it changes nothing, with none it is empty.",
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Soften(Video))\n",
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Video, Soften(Video))\n"},
    {"C506", kWarning, "several outermost names",
     "The composition has one output, the last outermost name. What stands in front of it is "
     "not used.",
     "[STRUCTURE]\n"
     "OUTPUT = Video, Soften(Video)\n",
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Video, Soften(Video))\n"},
    {"C507", kWarning, "an empty structure",
     "Nothing stands behind OUTPUT =: the composition has no output.",
     "[SOURCES]\n"
     "[EFFECTS]\n"
     "[STRUCTURE]\n"
     "OUTPUT =\n",
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n"},
    {"C508", kWarning, "a name that is declared twice",
     "Case aside, a name stands for one thing. Of two of a kind the later counts; of two kinds "
     "STRUCTURE can name only one.",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "SOFTEN = \"Sharpen\\Video\"\n",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "Sharpen = \"Sharpen\\Video\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = Sharpen(Soften(Video))\n"},
    {"C509", kWarning, "a mix with the name of another one",
     "Each MIX in STRUCTURE makes a mix that is called MIX and the number of mixes so far, "
     "even when EFFECTS declares one of that name.",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "Mix1 = MIX\n"
     "[STRUCTURE]\n"
     "OUTPUT = Mix1(Video, MIX(Video, Soften(Video)))\n",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "Join = MIX\n"
     "[STRUCTURE]\n"
     "OUTPUT = Join(Video, MIX(Video, Soften(Video)))\n"},
    {"C510", kWarning, "a mapped property that PROPERTIES lacks",
     "A host sees the properties of PROPERTIES. One that only MAPPING names cannot be set.",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Sise\" = Soften.\"Radius\"\n",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Soften.\"Radius\"\n"},
    {"C511", kWarning, "an envelope that is never used",
     "No statement of TIMELINE names it.",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR}, {25, HOLD}\n",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n"},
    {"C512", kWarning, "key times out of order",
     "A key's time lies before that of the key in front of it.",
     "[ENVELOPES]\n"
     "Fade = {3}, {0, 0, LINEAR}, {20, 0.5, LINEAR}, {10, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n",
     "[ENVELOPES]\n"
     "Fade = {3}, {0, 0, LINEAR}, {10, 0.5, LINEAR}, {20, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n"},
    {"C513", kWarning, "a statement that a later one replaces",
     "Of two statements of SETUP with one keyword, or one variable, the later counts.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "NAME = \"Soft Light\"\n"
     "CATEGORY = \"Light\"\n",
     "[SETUP]\n"
     "NAME = \"Soft Light\"\n"
     "CATEGORY = \"Light\"\n"},
    {"C514", kWarning, "SWAP = FALSE",
     "SWAP sets the swap mark whatever its value. Leave the statement out to leave the mark "
     "off.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "SWAP = FALSE\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"},
    {"C515", kWarning, "a whole number that reads as another",
     "A blank behind the \"-\" or another character among the digits ends the number there; "
     "beyond 32 bits it becomes the nearest one.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "SPEED = - 3\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "SPEED = -3\n"},
    {"C516", kNote, "numbers that mean nothing",
     "Behind HERMITE two numbers are its parameters. Behind another kind they are read and "
     "ignored.",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR, 1, 1}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, HERMITE, 1, 1}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n"},
};
// clang-format on

}  // namespace

std::span<const DiagnosticKind> UseKinds() {
    return kUseKinds;
}

}  // namespace tarnexctl
