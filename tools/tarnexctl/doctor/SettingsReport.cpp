#include "doctor/SettingsReport.h"

#include <filesystem>
#include <fstream>

#include "compositions/ConverterSettings.h"
#include "frame/Text.h"
#include "platform/Settings.h"

namespace tarnexctl {
namespace {

namespace fs = std::filesystem;

// The library's own keys.
constexpr char kLogKey[] = "Software\\Tesmar\\Commons\\Log";
constexpr char kCompositionsKey[] = "Software\\Tesmar\\VorelEngine\\Settings\\General";

std::optional<std::uint32_t> Number(const char* name) {
    std::uint32_t value = 0;
    if (!platform::ReadSettingsNumber(platform::CurrentUserSettings(), ToWide(kLogKey),
                                      ToWide(name), value)) {
        return std::nullopt;
    }
    return value;
}

void AddNumber(SettingsReport& report, const char* name, std::optional<std::uint32_t> value,
               const std::string& meaning) {
    std::optional<std::string> text;
    if (value) text = std::to_string(*value);
    report.values.push_back({kLogKey, name, text, meaning});
}

void ReadTracing(SettingsReport& report) {
    const auto enabled = Number("Enabled");
    const auto output = Number("LogToOutput");
    const auto level = Number("Level");
    report.tracing = enabled.value_or(0) != 0;
    AddNumber(report, "Enabled", enabled,
              report.tracing ? "a log is written" : "no log is written");
    AddNumber(report, "LogToOutput", output,
              output.value_or(0) == 1 ? "lines also go to the debugger output"
                                      : "lines go to the log alone");
    const std::uint32_t mask = level.value_or(0);
    AddNumber(report, "Level", level,
              (mask & 2) != 0 ? "reported errors are logged" : "reported errors are not logged");
    if (!report.tracing) {
        report.tracingWords = enabled ? "off: Enabled is 0" : "off: Enabled is not set";
        report.findings.push_back({"D101", enabled ? "Enabled is 0" : "Enabled is not set"});
    } else if ((mask & 2) == 0) {
        report.tracingWords =
            level ? "on, but Level " + std::to_string(mask) + " lets no error through"
                  : "on, but Level is not set, so nothing is let through";
        report.findings.push_back({"D102", report.tracingWords});
    } else {
        report.tracingWords = "on";
    }
}

void AddText(SettingsReport& report, const char* name, const std::wstring& value) {
    std::optional<std::string> text;
    if (!value.empty()) text = ToUtf8(value);
    report.values.push_back({kCompositionsKey, name, text, ""});
}

void ReadCompositions(SettingsReport& report) {
    const compositions::ConverterSettings settings = compositions::ReadConverterSettings();
    AddText(report, "Convertor", settings.convertor);
    AddText(report, "Type", settings.type);
    AddText(report, "SaveFx", settings.saveFx);
    if (!settings.convertor.empty() && !settings.AreWithinLimits()) {
        report.archiveWords = "every load of a composition by path fails: a value is too long";
        report.findings.push_back({"D107", report.archiveWords});
    } else if (settings.WritesArchives()) {
        report.archiveWords = "scripts are read, and their archives written at every load";
    } else if (settings.IsConverting()) {
        report.archiveWords = "scripts are read, archives neither read nor written";
    } else {
        report.archiveWords = "a path that names an archive is read as one; none is written";
    }
}

// Makes a file and takes it away again.
bool CanMakeFilesIn(const fs::path& folder) {
    const fs::path trial = folder / "tarnexctl-write-test.tmp";
    std::error_code ignored;
    if (fs::exists(trial, ignored)) return false;
    const bool made = std::ofstream(trial, std::ios::binary).put('x').flush().good();
    fs::remove(trial, ignored);
    return made;
}

}  // namespace

SettingsReport ReadSettingsReport() {
    SettingsReport report;
    report.store = ToUtf8(platform::SettingsStore());
    ReadTracing(report);
    ReadCompositions(report);
    return report;
}

FolderReport ReadFolder(const std::string& folder, const std::string& purpose) {
    FolderReport report = {folder, purpose};
    const fs::path path = ToPath(folder);
    std::error_code ignored;
    report.exists = fs::is_directory(path, ignored);
    if (report.exists) {
        report.writable = CanMakeFilesIn(path);
    } else if (!fs::exists(path, ignored)) {
        const fs::path parent = path.parent_path();
        report.writable = fs::is_directory(parent, ignored) && CanMakeFilesIn(parent);
    }
    return report;
}

std::vector<FolderReport> ReadLogFolders(const std::string& programFolder) {
    const std::string logs = FromPath(ToPath(programFolder) / "Logs");
    std::vector<FolderReport> folders = {ReadFolder(logs, "the log, first choice")};
    // The other places are on a drive that only Windows has.
    if (fs::path::preferred_separator == '\\') {
        folders.push_back(ReadFolder("d:\\Logs", "the log, second choice"));
        folders.push_back(ReadFolder("d:\\", "the log, last choice"));
    }
    return folders;
}

}  // namespace tarnexctl
