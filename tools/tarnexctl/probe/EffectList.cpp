#include "probe/EffectList.h"

#include <algorithm>

#include "frame/Text.h"
#include "fx/EffectDescriptor.h"
#include "probe/ChildRun.h"
#include "probe/CompositionList.h"
#include "probe/Diagnosis.h"

namespace tarnexctl {
namespace {

constexpr std::uint64_t kSecondsToList = 10;

bool IsBadEnd(const Finding& finding) {
    return finding.code == "P901" || finding.code == "P902" || finding.code == "P903";
}

std::vector<PluginFile> WantedPlugins(const Arguments& arguments) {
    const auto folder = arguments.Value("FOLDER");
    const std::vector<std::string> names = arguments.Values("--plugin");
    if (!folder) {
        if (!names.empty()) {
            throw Failure(ExitCode::kUsage, "--plugin names a library of the folder FOLDER",
                          "give the folder as well");
        }
        if (!arguments.Has("--compositions") && !arguments.Has("--register")) {
            throw Failure(ExitCode::kUsage, "nothing to list was named",
                          "give a plug-in folder, --compositions or --register");
        }
        return {};
    }
    return names.empty() ? PluginsInFolder(*folder) : PluginsByName(*folder, names);
}

// What one child process said of the library with that number.
void TakeLibrary(const Json& said, ListedLibrary& library, EffectList& list,
                 std::uint64_t firstIndex) {
    library.count = said.value("count", 0u);
    for (const Json& finding : said.value("findings", Json::array())) {
        library.findings.push_back({finding.value("code", ""), finding.value("detail", "")});
    }
    for (const Json& effect : said.value("effects", Json::array())) {
        ListedEffect listed;
        listed.localIndex = effect.value("index", std::uint64_t{0});
        listed.index = firstIndex + listed.localIndex;
        listed.name = effect.value("name", "");
        listed.flags = effect.value("flags", 0u);
        listed.inputs = effect.value("inputs", std::uint64_t{0});
        listed.from = FromPath(library.file.path);
        list.effects.push_back(std::move(listed));
    }
}

// Why the loader refused it; a file that is no plug-in at all is no finding when nobody asked for
// it.
void Explain(ListedLibrary& library) {
    const bool refused = std::any_of(
        library.findings.begin(), library.findings.end(),
        [](const Finding& finding) { return finding.code == "P111" || finding.code == "P105"; });
    if (!refused) return;
    const Diagnosis diagnosis = Diagnose(library.file.path);
    std::vector<Finding> reasons;
    for (const Finding& finding : diagnosis.findings) {
        if (SeverityOf(finding) == Severity::kError) reasons.push_back(finding);
    }
    if (!reasons.empty()) library.findings = reasons;
    library.notAPlugin = !library.file.asked && diagnosis.image.problem.empty() &&
                         !diagnosis.image.Exports("CreateFactory");
}

// Appends the paths of the libraries from `next` on, as far as a command line holds them: one of
// Windows has at most 32767 characters. Returns the number of the first that is left.
std::size_t AddPaths(const EffectList& list, std::size_t next, std::vector<std::string>& line) {
    constexpr std::size_t kMostBytes = 16 * 1024;
    std::size_t bytes = 0;
    const std::size_t first = next;
    for (; next < list.libraries.size(); ++next) {
        std::error_code ignored;
        const std::string path =
            FromPath(std::filesystem::absolute(list.libraries[next].file.path, ignored));
        bytes += path.size() + 1;
        if (bytes > kMostBytes && next > first) break;
        line.push_back(path);
    }
    return next;
}

// Runs children until every library was tried: a child that does not come to its end is followed by
// another one that goes on behind the library that ended it.
void ListPlugins(EffectList& list, std::uint32_t timeoutMs, Session& session) {
    std::uint64_t nextIndex = 0;
    for (std::size_t next = 0; next < list.libraries.size();) {
        std::vector<std::string> line = {"list-child", "--"};
        const std::size_t end = AddPaths(list, next, line);
        session.Progress("Reading library", next + 1, list.libraries.size());
        const ChildOutcome outcome = RunOwnChild(line, timeoutMs);
        for (const auto& [key, said] : outcome.values) {
            if (next == list.libraries.size()) break;
            TakeLibrary(said, list.libraries[next], list, nextIndex);
            nextIndex += list.libraries[next].count;
            ++next;
        }
        // Behind the last one only this program's own code could have failed.
        if (next == end) continue;
        for (const Finding& finding : outcome.findings) {
            list.libraries[next].findings.push_back(finding);
        }
        ++next;
    }
}

}  // namespace

bool EffectList::HasFindings() const {
    return std::any_of(libraries.begin(), libraries.end(),
                       [](const ListedLibrary& library) {
                           return !library.findings.empty() && !library.notAPlugin;
                       }) ||
           std::any_of(
               compositions.begin(), compositions.end(),
               [](const ListedComposition& composition) { return !composition.problem.empty(); });
}

bool EffectList::HasCrashes() const {
    return std::any_of(libraries.begin(), libraries.end(), [](const ListedLibrary& library) {
        return std::any_of(library.findings.begin(), library.findings.end(), IsBadEnd);
    });
}

ArgumentSpec EffectListFolder() {
    return {"FOLDER",
            "The plug-in folder: every library in it, by name.",
            ValueKind::kFolder,
            {},
            false};
}

std::vector<OptionSpec> EffectListOptions() {
    return {{"--plugin",
             "-p",
             "NAME",
             "Only this library of the folder; repeat it for an order.",
             ValueKind::kText,
             {},
             true},
            {"--compositions", "-c", "FOLDER", "The compositions folder: every script in it.",
             ValueKind::kFolder},
            {"--register",
             "-r",
             "SCRIPT",
             "Also this composition script; may be repeated.",
             ValueKind::kFile,
             {},
             true},
            {"--timeout", "-t", "SECONDS", "How long the plug-ins may take in all (default 10).",
             ValueKind::kNumber}};
}

EffectList ReadEffectList(const Arguments& arguments, Session& session) {
    EffectList list;
    const auto seconds = arguments.Number("--timeout", 1, 3600).value_or(kSecondsToList);
    for (PluginFile& file : WantedPlugins(arguments)) {
        list.libraries.push_back({std::move(file)});
    }
    ListPlugins(list, static_cast<std::uint32_t>(seconds * 1000), session);
    for (ListedLibrary& library : list.libraries) Explain(library);
    ListCompositions(arguments, list);
    return list;
}

std::string FlagWords(std::uint32_t flags) {
    struct Flag {
        std::uint32_t bit;
        const char* word;
    };
    constexpr Flag kFlags[] = {{fx::eEffectFilter, "filter"},
                               {fx::eEffectMultipleInputs, "multiple-inputs"},
                               {fx::eEffectStandard, "standard"}};
    std::string words;
    for (const Flag& flag : kFlags) {
        if ((flags & flag.bit) == 0) continue;
        words += (words.empty() ? "" : " ") + std::string(flag.word);
        flags &= ~flag.bit;
    }
    if (flags != 0) words += (words.empty() ? "" : " ") + std::to_string(flags);
    return words.empty() ? "none" : words;
}

void WarnOfFindings(const EffectList& list, Session& session) {
    for (const ListedLibrary& library : list.libraries) {
        if (library.notAPlugin) continue;
        for (const Finding& finding : library.findings) {
            const FindingKind* const kind = FindFindingKind(finding.code);
            session.Warn(Printable(library.file.name) + ": " + (kind ? kind->title : "") +
                         (finding.detail.empty() ? "" : ": " + Printable(finding.detail)) + " [" +
                         finding.code + "]");
        }
    }
    for (const ListedComposition& composition : list.compositions) {
        if (composition.problem.empty()) continue;
        session.Warn(Printable(composition.script) + ": " + composition.problem);
    }
}

}  // namespace tarnexctl
