#include <algorithm>

#include "commands/Commands.h"
#include "doctor/Ownership.h"
#include "doctor/SettingsReport.h"
#include "frame/Columns.h"
#include "frame/InputFile.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "frame/Version.h"
#include "platform/LibrarySearch.h"
#include "platform/Module.h"

namespace tarnexctl {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kTimeoutMs = 10000;

struct Health {
    SettingsReport settings;
    std::vector<FolderReport> folders;
    std::string library;  // empty when none was found
    Ownership ownership;
    std::vector<Finding> findings;
};

// The library that the user named, or the one beside this program.
std::string FindLibrary(const Arguments& arguments) {
    std::error_code ignored;
    if (const auto named = arguments.Value("--library")) {
        return FromPath(fs::absolute(ExistingFile(*named), ignored));
    }
    const fs::path own = ToPath(ToUtf8(platform::ExecutablePath())).parent_path();
    for (const char* prefix : {"", "lib"}) {
        const fs::path path = own / (std::string(prefix) + "tarnex" + platform::LibraryExtension());
        if (fs::is_regular_file(path, ignored)) return FromPath(path);
    }
    return {};
}

// The folder of the host whose log is asked for; this program's own when none was named.
std::string HostFolder(const Arguments& arguments) {
    std::error_code ignored;
    const auto host = arguments.Value("--host");
    const fs::path program = host ? fs::absolute(ExistingFile(*host), ignored)
                                  : ToPath(ToUtf8(platform::ExecutablePath()));
    return FromPath(program.parent_path());
}

void JudgeFolders(Health& health) {
    const bool anyLog = std::any_of(health.folders.begin(), health.folders.end(),
                                    [](const FolderReport& folder) { return folder.writable; });
    if (health.settings.tracing && !anyLog) {
        health.findings.push_back({"D103", health.folders.front().folder});
    }
}

void JudgeOwnership(Health& health) {
    switch (health.ownership.state) {
        case OwnershipState::kFree:
            break;
        case OwnershipState::kTaken:
            health.findings.push_back({"D104", ""});
            break;
        case OwnershipState::kStuck:
            health.findings.push_back({"D105", ""});
            break;
        case OwnershipState::kUnknown:
            health.findings.push_back({"D108", ""});
            break;
        case OwnershipState::kNoLibrary:
            health.findings.push_back({"D106", health.library.empty()
                                                   ? "none lies beside this program"
                                                   : health.ownership.problem});
            break;
    }
}

Health Examine(const Arguments& arguments) {
    Health health;
    health.settings = ReadSettingsReport();
    health.findings = health.settings.findings;
    health.folders = ReadLogFolders(HostFolder(arguments));
    JudgeFolders(health);
    if (const auto folder = arguments.Value("--compositions")) {
        health.folders.push_back(ReadFolder(FromPath(ExistingFolder(*folder)), "archives"));
        if (!health.folders.back().writable) health.findings.push_back({"D109", *folder});
    }
    health.library = FindLibrary(arguments);
    if (!health.library.empty()) health.ownership = AskOwnership(health.library, kTimeoutMs);
    JudgeOwnership(health);
    return health;
}

void PrintSettings(Writer& out, const SettingsReport& settings) {
    out << "Settings: " << Printable(settings.store) << "\n";
    Columns table({"KEY", "NAME", "VALUE", "MEANING"});
    for (const SettingValue& value : settings.values) {
        table.Add({value.key, value.name, value.value.value_or("(not set)"), value.meaning});
    }
    table.Print(out);
    out << "\nTracing:  " << settings.tracingWords << "\n";
    out << "Archives: " << settings.archiveWords << "\n\n";
}

void PrintHealth(Writer& out, const Health& health) {
    out << VersionLine() << "\n\n";
    PrintSettings(out, health.settings);
    Columns folders({"FOLDER", "FOR", "EXISTS", "WRITABLE"});
    for (const FolderReport& folder : health.folders) {
        folders.Add({folder.folder, folder.purpose, folder.exists ? "yes" : "no",
                     folder.writable ? "yes" : "no"});
    }
    folders.Print(out);
    out << "\nLibrary:   " << (health.library.empty() ? "not found" : Printable(health.library))
        << "\n";
    out << "Ownership: " << OwnershipName(health.ownership.state) << "\n";
    for (const Holder& holder : health.ownership.holders) {
        out << "  process " << std::to_string(holder.process) << " " << Printable(holder.program)
            << ": "
            << (!holder.owner   ? "cannot be asked"
                : *holder.owner ? "the owner"
                                : "was refused")
            << "\n";
    }
    if (!health.findings.empty()) out << "\n";
    for (const Finding& finding : health.findings) {
        const FindingKind* const kind = FindFindingKind(finding.code);
        out << SeverityName(SeverityOf(finding)) << ": " << (kind == nullptr ? "" : kind->title);
        if (!finding.detail.empty()) out << ": " << Printable(finding.detail);
        out << " [" << finding.code << "]\n";
    }
}

void FillDocument(Json& document, const Health& health) {
    document["version"] = VersionDocument();
    Json& settings = document["settings"];
    settings["store"] = health.settings.store;
    settings["values"] = Json::array();
    for (const SettingValue& value : health.settings.values) {
        Json entry = {{"key", value.key}, {"name", value.name}, {"value", nullptr}};
        if (value.value) entry["value"] = *value.value;
        settings["values"].push_back(std::move(entry));
    }
    document["tracing"] = {{"on", health.settings.tracing},
                           {"words", health.settings.tracingWords}};
    document["archives"] = health.settings.archiveWords;
    document["folders"] = Json::array();
    for (const FolderReport& folder : health.folders) {
        document["folders"].push_back({{"folder", folder.folder},
                                       {"for", folder.purpose},
                                       {"exists", folder.exists},
                                       {"writable", folder.writable}});
    }
    document["library"] = health.library;
    Json& ownership = document["ownership"];
    ownership["state"] = OwnershipName(health.ownership.state);
    ownership["holders"] = Json::array();
    for (const Holder& holder : health.ownership.holders) {
        Json entry = {{"process", holder.process}, {"program", holder.program}, {"owner", nullptr}};
        if (holder.owner) entry["owner"] = *holder.owner;
        ownership["holders"].push_back(std::move(entry));
    }
    document["findings"] = Json::array();
    for (const Finding& finding : health.findings) {
        document["findings"].push_back(FindingDocument(finding));
    }
}

ExitCode RunDoctor(const Arguments& arguments, Session& session) {
    const Health health = Examine(arguments);
    PrintHealth(session.Out(), health);
    FillDocument(session.Document(), health);
    const bool wrong =
        std::any_of(health.findings.begin(), health.findings.end(),
                    [](const Finding& finding) { return SeverityOf(finding) != Severity::kNote; });
    return wrong ? ExitCode::kFindings : ExitCode::kFine;
}

}  // namespace

CommandSpec DoctorCommand() {
    CommandSpec command;
    command.name = "doctor";
    command.summary = "examines settings, log folders and who owns the library";
    command.description = {
        "Shows the settings in force and where they come from, whether tracing is on and where the "
        "log goes, which folders can be written, and whether the machine's one ownership of the "
        "library is free. For that a child process loads the library for a moment; a host that "
        "loads it for the first time in that very moment is refused.",
        "Exit code 1 when something needs attention."};
    command.options = {
        {"--library", "-l", "FILE", "The library; the one beside this program without it.",
         ValueKind::kFile},
        {"--host", "", "PROGRAM", "The host whose log folder is examined.", ValueKind::kFile},
        {"--compositions", "-c", "FOLDER", "Also examine this folder, where archives go.",
         ValueKind::kFolder}};
    command.examples = {{"tarnexctl doctor", "The state of this machine."},
                        {"tarnexctl doctor --host engine.exe --json", "For one host, as JSON."}};
    command.run = RunDoctor;
    return command;
}

}  // namespace tarnexctl
