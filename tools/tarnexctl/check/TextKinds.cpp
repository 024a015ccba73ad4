#include "check/DiagnosticKinds.h"

namespace tarnexctl {
namespace {

using enum Severity;

// clang-format off
// C3: text that is not read, or not as it looks.
constexpr DiagnosticKind kTextKinds[] = {
    {"C301", kError, "a section ends before the next header",
     "Nothing marks a section's end: it ends at the first text that is none of its statements, "
     "and what follows, up to the next header, is never read.",
     "[SOURCES]\n"
     "Video = INPUT\n"
     "Logo = BITMAP \"logo.png\"\n",
     "[SOURCES]\n"
     "Video = INPUT\n"
     "Logo = BITMAP : \"logo.png\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Soften(Video), Logo)\n"},
    {"C302", kError, "a text that cannot start so",
     "A text starts with a letter, a digit or one of []=:\\.(){},-%. With any other character "
     "in front its statement does not read, and the section ends there.",
     "[EFFECTS]\n"
     "Soften = \"_Blur\\Video\"\n",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"},
    {"C303", kError, "a text without its closing quote",
     "A text ends at the next quote, wherever that is. Without the closing one it swallows the "
     "lines up to the next text, or its statement does not read.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\n"
     "CATEGORY = \"Light\"\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"},
    {"C304", kError, "a \";\" within a text",
     "A \";\" starts a comment even within a text, and there is no way to write one there: the "
     "rest of the line is gone, the closing quote included.",
     "[SETUP]\n"
     "NAME = \"Soft; Focus\"\n"
     "CATEGORY = \"Light\"\n",
     "[SETUP]\n"
     "NAME = \"Soft, Focus\"\n"
     "CATEGORY = \"Light\"\n"},
    {"C305", kError, "a comment that joins two words",
     "A comment takes the line end with it. With no blank in front of its \";\" and none at the "
     "start of the next line, the words on both sides become one.",
     "[SOURCES]\n"
     "Video = INPUT;the picture\n"
     "Title = INPUT\n",
     "[SOURCES]\n"
     "Video = INPUT ;the picture\n"
     "Title = INPUT\n"
     "[STRUCTURE]\n"
     "OUTPUT = MIX(Soften(Video), Title)\n"},
    {"C306", kError, "a number that cannot be written so",
     "Numbers are digits, with \"-\" in front and a fraction behind if need be. There is no +7, "
     "no .5 and no 0,5, and SPEED and the numbers of inputs are whole.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "SPEED = 2.5\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "SPEED = 2\n"},
    {"C307", kError, "a register block of other than two or three texts",
     "A registry variable is a key, a value's name and perhaps a text for when there is no "
     "such value. A block of one text, or of four, is no statement and ends SETUP.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "%Folder% = REGS : {\"Software\\Studio\"}\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "%Folder% = REGS : {\"Software\\Studio\", \"Folder\"}\n"},
    {"C308", kError, "the last key of an envelope has a value",
     "The last key has a time and a kind and always stands for 1.0. With a value the statement "
     "is none, and ENVELOPES ends there.",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR}, {25, 1, HOLD}\n",
     "[ENVELOPES]\n"
     "Fade = {2}, {0, 0, LINEAR}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n"},
    {"C309", kError, "a key without a value that is not the last",
     "A key without a value closes its statement: the keys behind it end ENVELOPES.",
     "[ENVELOPES]\n"
     "Fade = {3}, {0, 0, LINEAR}, {12, LINEAR}, {25, HOLD}\n",
     "[ENVELOPES]\n"
     "Fade = {3}, {0, 0, LINEAR}, {12, 0.5, LINEAR}, {25, HOLD}\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = Fade\n"},
    {"C310", kWarning, "a statement with an unknown keyword",
     "SETUP passes over a statement of the right form whose keyword it does not know, or whose "
     "keyword takes a value of another form.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "SPED = 2\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "SPEED = 2\n"},
    {"C311", kWarning, "a variable that is no register block",
     "Only REGS declares a variable. Another value is passed over.",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "%Folder% = \"C:\\Titles\"\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "%Folder% = REGS : {\"Software\\Studio\", \"Folder\", \"C:\\Titles\"}\n"},
    {"C312", kError, "a timeline statement without a value",
     "A value is a number, a text in quotes, a variable or an envelope's name. With anything "
     "else the statement sets nothing, and TIMELINE ends behind it.",
     "[TIMELINE]\n"
     "Soften.\"Radius\" = {4}\n",
     "[TIMELINE]\n"
     "Soften.\"Radius\" = 4\n"},
    {"C313", kError, "a header without a blank behind it",
     "A header counts only when a blank or a line end follows its \"]\" directly. A comment "
     "right behind it takes the line end away.",
     "[TIMELINE]Soften.\"Radius\" = 4\n",
     "[TIMELINE] Soften.\"Radius\" = 4\n"},
    {"C314", kError, "an unknown section",
     "There are eight sections. What stands behind any other header is not read.",
     "[PROPERTYS]\n"
     "READ WRITE \"Radius\" = 4\n",
     "[PROPERTIES]\n"
     "READ WRITE \"Radius\" = 4\n"},
    {"C315", kError, "a section that is there twice",
     "The first header of a name counts. What stands behind the second is not read.",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "[EFFECTS]\n"
     "Sharpen = \"Sharpen\\Video\"\n",
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "Sharpen = \"Sharpen\\Video\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = Sharpen(Soften(Video))\n"},
    {"C316", kError, "a header within a text",
     "A header is found wherever its characters stand, in a text too. The section starts "
     "there, and its real header is the second one.",
     "[SETUP]\n"
     "NAME = \"The [TIMELINE] one\"\n"
     "CATEGORY = \"Light\"\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = 4\n",
     "[SETUP]\n"
     "NAME = \"The timeline one\"\n"
     "CATEGORY = \"Light\"\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = 4\n"},
    {"C317", kNote, "a section that stands in a comment",
     "The only header of this section is commented out. That may be meant.",
     ";[TIMELINE]\n"
     ";Soften.\"Radius\" = 4\n",
     "[TIMELINE]\n"
     "Soften.\"Radius\" = 4\n"},
    {"C318", kWarning, "text in front of the first header",
     "What belongs to no section is never read. Notes are comments: they start with a \";\".",
     "Written in May.\n"
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "[SOURCES]\n"
     "Video = INPUT\n"
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n",
     "; Written in May.\n"
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"
     "[SOURCES]\n"
     "Video = INPUT\n"
     "[EFFECTS]\n"
     "Soften = \"Blur\\Video\"\n"
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n", true},
    {"C319", kNote, "sections that were not reached",
     "When a section that must be there is refused, reading ends: the sections that are read "
     "after it were not looked at and may hold more to mend.",
     "[STRUCTURE]\n"
     "OUTPUT = Sotfen(Video)\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = 4\n",
     "[STRUCTURE]\n"
     "OUTPUT = Soften(Video)\n"
     "[TIMELINE]\n"
     "Soften.\"Radius\" = 4\n"},
    {"C320", kNote, "blanks at the start of a text",
     "A text starts with its first character that is no blank. Blanks at its end stay.",
     "[SETUP]\n"
     "NAME = \"  Soft Focus\"\n"
     "CATEGORY = \"Light\"\n",
     "[SETUP]\n"
     "NAME = \"Soft Focus\"\n"
     "CATEGORY = \"Light\"\n"},
    {"C321", kWarning, "text between a target's full stop and its quote",
     "The full stop of a target runs on to the next quote. What stands in between is passed "
     "over, other targets included.",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Soften.Passes, Soften.\"Radius\"\n",
     "[PROPERTIES]\n"
     "WRITE \"Size\" = 4\n"
     "[MAPPING]\n"
     "WRITE \"Size\" = Soften.\"Passes\", Soften.\"Radius\"\n"},
    {"C322", kWarning, "a number with other characters in it",
     "A \"-\" and the full stop of a fraction run on to the next digit, and digits to the next "
     "blank, letter or mark. What stands in between is part of the number, other statements "
     "included.",
     "[PROPERTIES]\n"
     "READ WRITE \"Radius\" = -auto\n"
     "READ WRITE \"Passes\" = 3\n",
     "[PROPERTIES]\n"
     "READ WRITE \"Radius\" = -1\n"
     "READ WRITE \"Passes\" = 3\n"},
};
// clang-format on

}  // namespace

std::span<const DiagnosticKind> TextKinds() {
    return kTextKinds;
}

}  // namespace tarnexctl
