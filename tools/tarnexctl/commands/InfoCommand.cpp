#include <charconv>

#include "commands/Commands.h"
#include "frame/Columns.h"
#include "frame/Session.h"
#include "frame/Suggest.h"
#include "frame/Text.h"
#include "probe/ChildRun.h"
#include "probe/CompositionParts.h"
#include "probe/EffectList.h"

namespace tarnexctl {
namespace {

// The effect of that index, when the text is a number, or of exactly that name.
const ListedEffect& FindEffect(const EffectList& list, const std::string& wanted) {
    std::uint64_t index = 0;
    const char* const end = wanted.data() + wanted.size();
    const auto [rest, error] = std::from_chars(wanted.data(), end, index);
    const bool isIndex = error == std::errc() && rest == end;
    std::vector<std::string> names;
    for (const ListedEffect& effect : list.effects) {
        if (isIndex ? effect.index == index : effect.name == wanted) return effect;
        names.push_back(effect.name);
        names.push_back(effect.name.substr(0, effect.name.find('\\')));
    }
    const auto meant = isIndex ? std::nullopt : Suggest(wanted, names);
    std::string hint = "\"tarnexctl list\" shows what there is";
    if (meant) {
        for (const std::string& name : names) {
            if (name == *meant || name.starts_with(*meant + "\\")) {
                hint = "did you mean \"" + Printable(name) + "\"?";
                break;
            }
        }
    }
    throw Failure(ExitCode::kNotFound,
                  (isIndex ? "there is no effect with the index " + wanted
                           : "there is no effect \"" + Printable(ValidUtf8(wanted)) + "\""),
                  hint);
}

std::string Cell(const Json& property, const char* key) {
    if (!property.contains(key)) return "";
    const Json& value = property[key];
    return value.is_string() ? value.get<std::string>() : value.dump();
}

void PrintProperties(Writer& out, const Json& properties) {
    if (properties.empty()) {
        out << "\nNo properties.\n";
        return;
    }
    Columns table({"PROPERTY", "TYPE", "ACCESS", "RANGE", "DEFAULT", "VALUE"});
    for (const Json& property : properties) {
        const std::string min = Cell(property, "min");
        table.Add({property.value("name", ""), property.value("type", "?"),
                   property.value("access", "?"),
                   min.empty() ? "" : min + " to " + Cell(property, "max"),
                   Cell(property, "default"), Cell(property, "value")});
    }
    out << "\n";
    table.Print(out);
}

void PrintHead(Writer& out, const ListedEffect& effect) {
    out << out.Paint(Style::kBold, Printable(effect.name)) << "\n";
    out << "  index:   " << std::to_string(effect.index) << "\n";
    out << "  flags:   " << std::to_string(effect.flags) << " (" << FlagWords(effect.flags)
        << ")\n";
    out << "  inputs:  " << std::to_string(effect.inputs) << "\n";
    out << "  from:    " << Printable(effect.from) << "\n";
}

// Asks a child process for what the list does not hold.
ExitCode DescribePlugin(const ListedEffect& effect, std::uint32_t timeoutMs, Session& session) {
    std::error_code ignored;
    const auto path = std::filesystem::absolute(ToPath(effect.from), ignored);
    const ChildOutcome outcome = RunOwnChild(
        {"info-child", "--", std::to_string(effect.localIndex), FromPath(path)}, timeoutMs);
    for (const auto& [key, value] : outcome.values) session.Document()[key] = value;
    for (const Finding& finding : outcome.findings) {
        session.Warn(Printable(finding.detail) + " [" + finding.code + "]");
        session.Document()["findings"].push_back(FindingDocument(finding));
    }
    if (const Json* properties = outcome.Find("properties")) {
        PrintProperties(session.Out(), *properties);
    }
    if (!outcome.finished) return ExitCode::kPlugin;
    return outcome.findings.empty() ? ExitCode::kFine : ExitCode::kFindings;
}

ExitCode RunInfo(const Arguments& arguments, Session& session) {
    const EffectList list = ReadEffectList(arguments, session);
    const ListedEffect& effect = FindEffect(list, arguments.ValueOr("EFFECT", ""));
    Json& document = session.Document();
    document["index"] = effect.index;
    document["name"] = effect.name;
    document["flags"] = effect.flags;
    document["flagWords"] = FlagWords(effect.flags);
    document["inputs"] = effect.inputs;
    document["enabled"] = effect.enabled;
    document["composition"] = effect.isComposition;
    document["from"] = effect.from;
    PrintHead(session.Out(), effect);
    if (effect.isComposition) return DescribeComposition(effect.from, session);
    const auto seconds = arguments.Number("--timeout", 1, 3600).value_or(10);
    return DescribePlugin(effect, static_cast<std::uint32_t>(seconds * 1000), session);
}

}  // namespace

CommandSpec InfoCommand() {
    CommandSpec command;
    command.name = "info";
    command.summary = "shows one effect: descriptor, properties, a composition's parts";
    command.description = {
        "The effect is named by its index or by its whole name, as \"tarnexctl list\" shows them "
        "for the same folder and compositions."};
    command.arguments = {{"EFFECT", "The effect's index or name."}, EffectListFolder()};
    command.options = EffectListOptions();
    command.examples = {
        {"tarnexctl info 0 plugins", "The first effect of a plug-in folder."},
        {"tarnexctl info 'Glow\\Light' -c compositions", "A composition, with its parts."}};
    command.run = RunInfo;
    return command;
}

}  // namespace tarnexctl
