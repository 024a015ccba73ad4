#include <algorithm>

#include "commands/Commands.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "probe/ChildRun.h"
#include "probe/Diagnosis.h"
#include "probe/PluginFolder.h"

namespace tarnexctl {
namespace {

constexpr std::uint64_t kDefaultSeconds = 10;

struct Probed {
    PluginFile file;
    Diagnosis diagnosis;
    ChildOutcome child;
    std::vector<Finding> findings;  // of both, most severe first

    bool Loaded() const { return child.Find("loaded") != nullptr; }
};

// Whether the child process came to no good end.
bool EndedBadly(const Finding& finding) {
    return finding.code == "P901" || finding.code == "P902" || finding.code == "P903";
}

// The system's words add nothing when the reason is known by name.
bool ReasonKnown(const Diagnosis& diagnosis) {
    return std::any_of(diagnosis.findings.begin(), diagnosis.findings.end(),
                       [](const Finding& finding) {
                           return finding.code != "P105" && finding.code != "P109" &&
                                  SeverityOf(finding) == Severity::kError;
                       });
}

std::vector<Finding> AllFindings(const Probed& probed) {
    std::vector<Finding> all = probed.diagnosis.findings;
    for (const Finding& finding : probed.child.findings) {
        if (finding.code == "P111" && ReasonKnown(probed.diagnosis)) continue;
        all.push_back(finding);
    }
    std::stable_sort(all.begin(), all.end(), [](const Finding& a, const Finding& b) {
        return SeverityOf(a) < SeverityOf(b);
    });
    return all;
}

Probed Probe(const PluginFile& file, const Arguments& arguments, std::uint32_t timeoutMs) {
    Probed probed;
    probed.file = file;
    probed.diagnosis = Diagnose(file.path);
    // A damaged file or one of another system is not handed to the loader.
    if (probed.diagnosis.image.problem.empty() &&
        (probed.diagnosis.loadable || !ReasonKnown(probed.diagnosis))) {
        std::error_code ignored;
        const auto absolute = std::filesystem::absolute(file.path, ignored);
        std::vector<std::string> line = {"probe-child"};
        if (arguments.Has("--no-rendering")) line.push_back("--no-rendering");
        line.insert(line.end(), {"--", FromPath(absolute)});
        probed.child = RunOwnChild(line, timeoutMs);
    }
    probed.findings = AllFindings(probed);
    return probed;
}

void PrintFinding(Writer& out, const Finding& finding) {
    const FindingKind* const kind = FindFindingKind(finding.code);
    const Severity severity = SeverityOf(finding);
    out << "  " << out.Paint(StyleOf(severity), std::string(SeverityName(severity)) + ":") << " "
        << (kind == nullptr ? "" : kind->title);
    if (!finding.detail.empty()) out << ": " << Printable(finding.detail);
    out << " [" << finding.code << "]\n";
    if (kind != nullptr && severity != Severity::kNote) {
        out << Wrapped(kind->remedy, "      ");
    }
}

void PrintEffects(Writer& out, const ChildOutcome& child) {
    for (const auto& [key, effect] : child.values) {
        if (key != "effect") continue;
        std::string names;
        for (const Json& property : effect.value("properties", Json::array())) {
            names += (names.empty() ? "" : ", ") + property.value("name", "") + " (" +
                     property.value("type", "?") + ")";
        }
        out << "  effect " << std::to_string(effect.value("index", 0)) << ": "
            << Printable(effect.value("id", "without a descriptor")) << ", "
            << Count(effect.value("inputs", 0u), "input", "inputs") << "\n";
        if (!names.empty()) out << Wrapped("properties: " + Printable(names), "      ");
    }
}

void Print(Session& session, const Probed& probed) {
    Writer& out = session.Out();
    const bool bad =
        std::any_of(probed.findings.begin(), probed.findings.end(),
                    [](const Finding& finding) { return SeverityOf(finding) == Severity::kError; });
    const char* const state = !probed.Loaded() ? "does not load" : bad ? "has errors" : "loads";
    out << out.Paint(Style::kBold, Printable(probed.file.name)) << ": "
        << out.Paint(bad ? Style::kError : Style::kGood, state);
    if (!probed.diagnosis.image.machine.empty()) out << " (" << probed.diagnosis.image.machine;
    if (!probed.diagnosis.runtime.empty()) out << ", " << probed.diagnosis.runtime;
    if (!probed.diagnosis.image.machine.empty()) out << ")";
    out << "\n";
    PrintEffects(out, probed.child);
    for (const Finding& finding : probed.findings) PrintFinding(out, finding);
    if (!probed.child.noise.empty()) {
        out << "  it wrote: " << Printable(probed.child.noise.substr(0, 200)) << "\n";
    }
    out.Flush();
}

Json DocumentOf(const Probed& probed) {
    Json document;
    document["library"] = FromPath(probed.file.path);
    document["loads"] = probed.Loaded();
    document["machine"] = probed.diagnosis.image.machine;
    document["runtime"] = probed.diagnosis.runtime;
    Json& dependencies = document["dependencies"] = Json::array();
    for (const Dependency& dependency : probed.diagnosis.dependencies) {
        dependencies.push_back({{"name", dependency.name},
                                {"neededBy", dependency.wantedBy},
                                {"found", FromPath(dependency.found)},
                                {"missing", dependency.missing}});
    }
    Json& effects = document["effects"] = Json::array();
    for (const auto& [key, value] : probed.child.values) {
        if (key == "effect") effects.push_back(value);
    }
    Json& findings = document["findings"] = Json::array();
    for (const Finding& finding : probed.findings) findings.push_back(FindingDocument(finding));
    if (!probed.child.noise.empty()) document["wrote"] = probed.child.noise;
    return document;
}

ExitCode Worse(ExitCode a, const Probed& probed) {
    for (const Finding& finding : probed.findings) {
        if (EndedBadly(finding)) return ExitCode::kPlugin;
        if (SeverityOf(finding) == Severity::kError && a == ExitCode::kFine) {
            a = ExitCode::kFindings;
        }
    }
    return a;
}

ExitCode RunProbe(const Arguments& arguments, Session& session) {
    const std::vector<PluginFile> files = PluginsByPath(arguments.Values("LIBRARY"));
    const auto seconds = arguments.Number("--timeout", 1, 3600).value_or(kDefaultSeconds);
    ExitCode code = ExitCode::kFine;
    Json& libraries = session.Document()["libraries"] = Json::array();
    for (std::size_t i = 0; i < files.size(); ++i) {
        session.Progress("Probing library", i + 1, files.size());
        const Probed probed =
            Probe(files[i], arguments, static_cast<std::uint32_t>(seconds * 1000));
        Print(session, probed);
        libraries.push_back(DocumentOf(probed));
        code = Worse(code, probed);
    }
    if (files.empty()) session.Warn("no library was found");
    return code;
}

}  // namespace

CommandSpec ProbeCommand() {
    CommandSpec command;
    command.name = "probe";
    command.summary = "loads plug-in libraries in child processes and says what is wrong with them";
    command.description = {
        "Reads each library's file first: its system and machine, its exports, every library that "
        "it needs, and theirs. Then a child process of its own loads it and uses every operation "
        "of the interface: indexes out of range, access to properties, two instances, the order of "
        "release. A crash, a hang or an exit of that process is a finding like any other, and the "
        "next library has its turn.",
        "Exit code 1 when an error was found, 5 when a library crashed, hung or ended its "
        "process."};
    command.arguments = {
        {"LIBRARY", "A library, or a folder of them.", ValueKind::kFile, {}, true, true}};
    command.options = {
        {"--timeout", "-t", "SECONDS", "How long one library may take (default 10).",
         ValueKind::kNumber},
        {"--no-rendering", "", "",
         "Leave out the operations of the rendering engine, which are called without a device."}};
    command.examples = {
        {"tarnexctl probe plugins/glow.dll", "Everything about one plug-in."},
        {"tarnexctl probe plugins", "Every library in a folder."},
        {"tarnexctl probe --json plugins > report.json", "The same for a program."}};
    command.run = RunProbe;
    return command;
}

}  // namespace tarnexctl
