#include "check/CheckReport.h"

#include "check/SourceText.h"
#include "check/Subject.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

std::string Where(const std::string& file, const Place& place) {
    return Printable(ValidUtf8(file)) + ":" + std::to_string(place.line) + ":" +
           std::to_string(place.column) + ": ";
}

void PrintExcerpt(Writer& out, const SourceText& source, const Diagnostic& diagnostic,
                  Severity severity) {
    const Excerpt excerpt = source.Around(diagnostic.range);
    if (excerpt.text.empty()) return;
    const std::string number = std::to_string(source.LineOf(diagnostic.range.begin));
    const std::string margin(number.size() < 5 ? 5 - number.size() : 0, ' ');
    out << margin << out.Paint(Style::kDim, number + " | ") << excerpt.text << "\n";
    std::string mark(excerpt.markWidth, '~');
    mark[0] = '^';
    out << std::string(margin.size() + number.size(), ' ') << out.Paint(Style::kDim, " | ")
        << std::string(excerpt.markAt, ' ') << out.Paint(StyleOf(severity), mark) << "\n";
}

std::string CountsText(const ScriptVerdict& verdict, bool strict) {
    using enum Severity;
    std::string text;
    const auto add = [&](Severity severity, const char* one, const char* many) {
        const std::size_t count = CountOf(verdict.diagnostics, severity, strict);
        if (count > 0) text += (text.empty() ? "" : ", ") + Count(count, one, many);
    };
    add(kError, "error", "errors");
    add(kWarning, "warning", "warnings");
    add(kNote, "note", "notes");
    return text.empty() ? "nothing to mend" : text;
}

std::string StatusText(const ScriptVerdict& verdict) {
    return "status " + std::to_string(verdict.readStatus) + ", " +
           compositions::ReadStatusText(verdict.readStatus);
}

}  // namespace

Severity SeverityOf(const DiagnosticKind& kind, bool strict) {
    return strict && kind.severity == Severity::kWarning ? Severity::kError : kind.severity;
}

std::size_t CountOf(const Diagnostics& diagnostics, Severity severity, bool strict) {
    const std::size_t warnings = diagnostics.Count(Severity::kWarning);
    if (severity == Severity::kError) {
        return diagnostics.Count(severity) + (strict ? warnings : 0);
    }
    return strict && severity == Severity::kWarning ? 0 : diagnostics.Count(severity);
}

void PrintVerdict(Writer& out, const std::string& file, std::string_view bytes,
                  const ScriptVerdict& verdict, bool strict) {
    if (!verdict.diagnostics.IsEmpty()) {
        const SourceText source(bytes);
        for (const Diagnostic& diagnostic : verdict.diagnostics.List()) {
            const Severity severity = SeverityOf(*diagnostic.kind, strict);
            out << out.Paint(Style::kBold, Where(file, source.At(diagnostic.range.begin)))
                << out.Paint(StyleOf(severity), SeverityName(severity)) << ": "
                << diagnostic.message << " " << out.Paint(Style::kDim, "[") << diagnostic.kind->code
                << out.Paint(Style::kDim, "]") << "\n";
            PrintExcerpt(out, source, diagnostic, severity);
            if (!diagnostic.expected.empty()) {
                out << Wrapped("expected: " + Joined(diagnostic.expected, ", "), "        ", 100);
            }
            for (const std::string& line : diagnostic.help) {
                out << Wrapped(line, "        ", 100);
            }
        }
    }
    const std::size_t omitted = verdict.diagnostics.Omitted();
    if (omitted > 0)
        out << Printable(ValidUtf8(file)) << ": and " << std::to_string(omitted) << " more\n";
    out << Printable(ValidUtf8(file)) << ": " << StatusText(verdict) << "; "
        << CountsText(verdict, strict) << "\n";
}

void PrintShortVerdict(Writer& out, const std::string& file, std::string_view bytes,
                       const ScriptVerdict& verdict, bool strict) {
    if (verdict.diagnostics.IsEmpty()) return;
    const SourceText source(bytes);
    for (const Diagnostic& diagnostic : verdict.diagnostics.List()) {
        const Severity severity = SeverityOf(*diagnostic.kind, strict);
        out << Where(file, source.At(diagnostic.range.begin))
            << out.Paint(StyleOf(severity), SeverityName(severity)) << ": " << diagnostic.message;
        for (const std::string& line : diagnostic.help) out << "; " << line;
        out << " [" << diagnostic.kind->code << "]\n";
    }
    const std::size_t omitted = verdict.diagnostics.Omitted();
    if (omitted > 0) {
        out << Where(file, Place()) << "note: and " << std::to_string(omitted) << " more\n";
    }
}

Json VerdictDocument(const std::string& file, std::string_view bytes, const ScriptVerdict& verdict,
                     bool strict) {
    Json document;
    document["file"] = file;
    document["status"] = verdict.readStatus;
    document["statusText"] = compositions::ReadStatusText(verdict.readStatus);
    Json& sections = document["sections"] = Json::object();
    for (std::size_t i = 0; i < compositions::kSectionCount; ++i) {
        const auto section = static_cast<compositions::Section>(i);
        sections[SectionKeyword(section)] = verdict.sections[section];
    }
    document["errors"] = CountOf(verdict.diagnostics, Severity::kError, strict);
    document["warnings"] = CountOf(verdict.diagnostics, Severity::kWarning, strict);
    document["notes"] = CountOf(verdict.diagnostics, Severity::kNote, strict);
    document["omitted"] = verdict.diagnostics.Omitted();
    Json& list = document["diagnostics"] = Json::array();
    if (verdict.diagnostics.IsEmpty()) return document;
    const SourceText source(bytes);
    for (const Diagnostic& diagnostic : verdict.diagnostics.List()) {
        const Place place = source.At(diagnostic.range.begin);
        const Excerpt excerpt = source.Around(diagnostic.range);
        list.push_back({{"code", diagnostic.kind->code},
                        {"severity", SeverityName(SeverityOf(*diagnostic.kind, strict))},
                        {"line", place.line},
                        {"column", place.column},
                        {"offset", diagnostic.range.begin},
                        {"length", diagnostic.range.end - diagnostic.range.begin},
                        {"message", diagnostic.message},
                        {"expected", diagnostic.expected},
                        {"help", diagnostic.help},
                        {"source", excerpt.text}});
    }
    return document;
}

}  // namespace tarnexctl
