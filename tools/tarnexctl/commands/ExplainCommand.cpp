#include <algorithm>

#include "check/DiagnosticKinds.h"
#include "commands/Commands.h"
#include "frame/Columns.h"
#include "frame/Session.h"
#include "frame/Suggest.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

std::string UpperCase(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

// Codes of the other commands, which have a remedy and no example.
Json KindDocument(const FindingKind& kind) {
    return {{"code", kind.code},
            {"severity", SeverityName(kind.severity)},
            {"title", kind.title},
            {"meaning", kind.remedy}};
}

Json KindDocument(const DiagnosticKind& kind) {
    return {{"code", kind.code},
            {"severity", SeverityName(kind.severity)},
            {"title", kind.title},
            {"meaning", kind.meaning},
            {"wrong", ValidUtf8(kind.wrong)},
            {"right", ValidUtf8(kind.right)}};
}

void PrintExample(Writer& out, const char* heading, std::string_view example) {
    out << "\n" << heading << ":\n\n";
    if (example.empty()) out << "    (an empty file)\n";
    while (!example.empty()) {
        const std::size_t end = example.find('\n');
        out << "    " << Printable(ValidUtf8(example.substr(0, end))) << "\n";
        example.remove_prefix(std::min(end, example.size() - 1) + 1);
    }
}

void PrintHead(Writer& out, const Json& kind) {
    out << out.Paint(Style::kBold, kind["code"].get<std::string>()) << ", "
        << kind["severity"].get<std::string>() << ": " << kind["title"].get<std::string>() << "\n\n"
        << Wrapped(kind["meaning"].get<std::string>(), "");
}

void ListCodes(Session& session) {
    Columns table({"CODE", "SEVERITY", "MEANING"});
    Json& codes = session.Document()["codes"] = Json::array();
    const auto add = [&](const auto& kind) {
        table.Add({kind.code, SeverityName(kind.severity), kind.title});
        codes.push_back(KindDocument(kind));
    };
    for (const DiagnosticKind& kind : DiagnosticKinds()) add(kind);
    for (const FindingKind& kind : FindingKinds()) add(kind);
    table.Print(session.Out());
}

void Explain(const std::string& code, Session& session) {
    Json& document = session.Document();
    if (const DiagnosticKind* const kind = FindDiagnosticKind(code)) {
        document.update(KindDocument(*kind));
        PrintHead(session.Out(), document);
        PrintExample(session.Out(), "Wrong", kind->wrong);
        PrintExample(session.Out(), "Right", kind->right);
    } else if (const FindingKind* const finding = FindFindingKind(code)) {
        document.update(KindDocument(*finding));
        PrintHead(session.Out(), document);
    } else {
        throw Failure(ExitCode::kNotFound,
                      "there is no code \"" + Printable(ValidUtf8(code)) + "\"",
                      "\"tarnexctl explain\" lists them");
    }
}

ExitCode RunExplain(const Arguments& arguments, Session& session) {
    if (const auto code = arguments.Value("CODE")) {
        Explain(UpperCase(*code), session);
    } else {
        ListCodes(session);
    }
    return ExitCode::kFine;
}

}  // namespace

CommandSpec ExplainCommand() {
    CommandSpec command;
    command.name = "explain";
    command.summary = "tells what a code of \"check\", \"probe\" or \"doctor\" means";
    command.description = {
        "With a code of \"check\": what it means, an example that raises it and one that does not. "
        "Sections that must be there and are left out of an example are in order.",
        "Without a code: the list of all."};
    command.arguments = {{"CODE", "As it stands in brackets behind a finding."}};
    command.arguments[0].required = false;
    command.examples = {{"tarnexctl explain C304", "Why a \";\" does not belong into a text."},
                        {"tarnexctl explain", "Every code with a line."}};
    command.run = RunExplain;
    return command;
}

}  // namespace tarnexctl
