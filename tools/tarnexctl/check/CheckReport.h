#pragma once

// What "check" says about one script, for people and for programs.

#include <string>
#include <string_view>

#include "check/ScriptCheck.h"
#include "frame/Json.h"
#include "frame/Writer.h"

namespace tarnexctl {

// Lines for people: each diagnostic with its source line, a mark and what helps.
void PrintVerdict(Writer& out, const std::string& file, std::string_view bytes,
                  const ScriptVerdict& verdict, bool strict);

// One line each, as compilers print: "file:line:column: severity: message [code]".
void PrintShortVerdict(Writer& out, const std::string& file, std::string_view bytes,
                       const ScriptVerdict& verdict, bool strict);

Json VerdictDocument(const std::string& file, std::string_view bytes, const ScriptVerdict& verdict,
                     bool strict);

// Warnings count as errors when the check is strict.
Severity SeverityOf(const DiagnosticKind& kind, bool strict);
std::size_t CountOf(const Diagnostics& diagnostics, Severity severity, bool strict);

}  // namespace tarnexctl
