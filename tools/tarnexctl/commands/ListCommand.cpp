#include "commands/Commands.h"
#include "frame/Columns.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "probe/EffectList.h"

namespace tarnexctl {
namespace {

void PrintTable(Writer& out, const EffectList& list) {
    Columns table({"INDEX", "NAME", "FLAGS", "INPUTS", "ENABLED", "FROM"});
    table.AlignRight(0);
    table.AlignRight(3);
    for (const ListedEffect& effect : list.effects) {
        table.Add({std::to_string(effect.index), effect.name, FlagWords(effect.flags),
                   std::to_string(effect.inputs), effect.enabled ? "yes" : "no",
                   FromPath(ToPath(effect.from).filename())});
    }
    table.Print(out);
}

Json DocumentOf(const ListedEffect& effect) {
    Json document;
    document["index"] = effect.index;
    document["name"] = effect.name;
    document["flags"] = effect.flags;
    document["flagWords"] = FlagWords(effect.flags);
    document["inputs"] = effect.inputs;
    document["enabled"] = effect.enabled;
    document["composition"] = effect.isComposition;
    document["from"] = effect.from;
    return document;
}

void FillDocument(Json& document, const EffectList& list) {
    Json& effects = document["effects"] = Json::array();
    for (const ListedEffect& effect : list.effects) effects.push_back(DocumentOf(effect));
    Json& libraries = document["libraries"] = Json::array();
    for (const ListedLibrary& library : list.libraries) {
        Json entry;
        entry["library"] = FromPath(library.file.path);
        entry["plugin"] = !library.notAPlugin;
        entry["effects"] = library.count;
        Json& findings = entry["findings"] = Json::array();
        for (const Finding& finding : library.findings) {
            findings.push_back(FindingDocument(finding));
        }
        libraries.push_back(std::move(entry));
    }
    Json& compositions = document["compositions"] = Json::array();
    for (const ListedComposition& composition : list.compositions) {
        compositions.push_back({{"script", composition.script}, {"problem", composition.problem}});
    }
}

ExitCode RunList(const Arguments& arguments, Session& session) {
    const EffectList list = ReadEffectList(arguments, session);
    WarnOfFindings(list, session);
    if (arguments.Has("--names")) {
        for (const ListedEffect& effect : list.effects) {
            session.Out() << Printable(effect.name) << "\n";
        }
    } else {
        PrintTable(session.Out(), list);
    }
    FillDocument(session.Document(), list);
    if (list.HasCrashes()) return ExitCode::kPlugin;
    return list.HasFindings() ? ExitCode::kFindings : ExitCode::kFine;
}

}  // namespace

CommandSpec ListCommand() {
    CommandSpec command;
    command.name = "list";
    command.summary = "lists every effect of a plug-in folder and of compositions";
    command.description = {
        "The indexes are those that a host gets when it loads the same libraries in the same order "
        "and registers the same compositions. A library that the manager would pass over without a "
        "word, or that would leave the manager without any effect, is named on standard error; the "
        "others are listed all the same.",
        "Exit code 1 when a library or composition was left out, 5 when a library crashed, hung or "
        "ended its process."};
    command.arguments = {EffectListFolder()};
    command.options = EffectListOptions();
    command.options.push_back({"--names", "", "", "Print the names alone, one per line."});
    command.examples = {
        {"tarnexctl list plugins", "Every effect of the libraries in a folder."},
        {"tarnexctl list plugins -p glow.dll -p blur.dll -c compositions",
         "Two libraries in that order, then a folder of compositions."},
        {"tarnexctl list --names -c compositions", "The names of compositions alone."}};
    command.run = RunList;
    return command;
}

}  // namespace tarnexctl
