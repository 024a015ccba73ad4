#pragma once

// Everything that "check" can say about a composition script. Codes are stable: programs and people
// refer to them. C1 is about files, C2 says why the library refuses a script, C3 where text is not
// read, C4 what single statements lose, C5 what is declared and not used as it should be.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "probe/Findings.h"

namespace tarnexctl {

struct DiagnosticKind {
    const char* code;  // "C208"
    Severity severity;
    const char* title;    // one line, no full stop
    const char* meaning;  // what happens to such a script, and why
    // A script that raises the code, and the same one mended, which raises none. Sections that must
    // be there and are left out are those of CompletedExample.
    std::string_view wrong;
    std::string_view right;
    bool whole = false;  // nothing is left out
};

// The least script that reads; what many examples look like once they are mended.
inline constexpr std::string_view kLeastScript =
    "[SETUP]\n"
    "NAME = \"Soft Focus\"\n"
    "CATEGORY = \"Light\"\n"
    "[SOURCES]\n"
    "Video = INPUT\n"
    "[EFFECTS]\n"
    "Soften = \"Blur\\Video\"\n"
    "[STRUCTURE]\n"
    "OUTPUT = Soften(Video)\n";

// In the order of the codes.
const std::vector<DiagnosticKind>& DiagnosticKinds();

// Null for an unknown code.
const DiagnosticKind* FindDiagnosticKind(std::string_view code);

// The example with the sections that it leaves out in front of it.
std::string CompletedExample(const DiagnosticKind& kind, std::string_view example);

// The parts of the table, each in the order of its codes.
std::span<const DiagnosticKind> FileKinds();
std::span<const DiagnosticKind> RefusalKinds();
std::span<const DiagnosticKind> TextKinds();
std::span<const DiagnosticKind> StatementKinds();
std::span<const DiagnosticKind> UseKinds();

}  // namespace tarnexctl
