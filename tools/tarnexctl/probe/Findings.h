#pragma once

// Everything that can be found wrong with a plug-in library (P) or with the machine (D). Codes are
// stable: programs and people refer to them.

#include <string>
#include <vector>

#include "frame/Json.h"

namespace tarnexctl {

enum class Style;  // of frame/Writer.h

enum class Severity { kError, kWarning, kNote };

const char* SeverityName(Severity severity);
Style StyleOf(Severity severity);

struct FindingKind {
    const char* code;  // "P106"
    Severity severity;
    const char* title;   // one line, no full stop
    const char* remedy;  // what to do about it
};

// In the order of the codes.
const std::vector<FindingKind>& FindingKinds();

// Null for an unknown code.
const FindingKind* FindFindingKind(const std::string& code);

// One thing found: which kind, and what exactly.
struct Finding {
    std::string code;
    std::string detail;  // names, numbers; may be empty
};

Severity SeverityOf(const Finding& finding);
Json FindingDocument(const Finding& finding);

}  // namespace tarnexctl
