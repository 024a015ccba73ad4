#include "frame/CommandTable.h"
#include "frame/Completion.h"

namespace tarnexctl {
namespace {

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + "'";
}

// The values that may follow: files by default, else a list or nothing.
std::string Values(ValueKind kind, const std::vector<std::string>& choices) {
    if (kind == ValueKind::kFile) return " -F";
    if (kind == ValueKind::kFolder) return " -f -a '(__fish_complete_directories)'";
    std::string list;
    for (const std::string& choice : choices) list += (list.empty() ? "" : " ") + choice;
    return list.empty() ? " -f" : " -f -a " + Quoted(list);
}

void AddOption(const std::string& condition, const OptionSpec& option, std::string& script) {
    script += "complete -c tarnexctl" + condition + " -l " + option.name.substr(2);
    if (!option.shortName.empty()) script += " -s " + option.shortName.substr(1);
    if (!option.value.empty()) script += " -r" + Values(option.kind, option.choices);
    script += " -d " + Quoted(option.help) + "\n";
}

}  // namespace

std::string FishCompletion() {
    std::string script =
        "# fish completion for tarnexctl; put it as tarnexctl.fish into fish's completions.\n";
    for (const OptionSpec& option : CommonOptions()) AddOption("", option, script);
    for (const CommandSpec* command : OfferedCommands()) {
        script += "complete -c tarnexctl -n __fish_use_subcommand -f -a " + command->name + " -d " +
                  Quoted(command->summary) + "\n";
    }
    for (const CommandSpec* command : OfferedCommands()) {
        const std::string condition = " -n '__fish_seen_subcommand_from " + command->name + "'";
        for (const OptionSpec& option : command->options) AddOption(condition, option, script);
        if (command->arguments.empty()) {
            script += "complete -c tarnexctl" + condition + " -f\n";
        } else {
            const ArgumentSpec& argument = command->arguments.front();
            script += "complete -c tarnexctl" + condition +
                      Values(argument.kind, argument.choices) + "\n";
        }
    }
    return script;
}

}  // namespace tarnexctl
