#include "frame/CommandTable.h"
#include "frame/Completion.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

std::string FishQuoted(const std::string& text) {
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
    return choices.empty() ? " -f" : " -f -a " + FishQuoted(Joined(choices, " "));
}

void AddOption(const std::string& condition, const OptionSpec& option, std::string& script) {
    script += "complete -c tarnexctl" + condition + " -l " + option.name.substr(2);
    if (!option.shortName.empty()) script += " -s " + option.shortName.substr(1);
    if (!option.value.empty()) script += " -r" + Values(option.kind, option.choices);
    script += " -d " + FishQuoted(option.help) + "\n";
}

std::string Condition(const std::string& words) {
    return " -n '" + words + "'";
}

// What stands behind the command: words of the first argument until one of them is there, and paths
// where any argument is one.
void AddArguments(const CommandSpec& command, std::string& script) {
    const std::string seen = "__fish_seen_subcommand_from ";
    std::string condition = seen + command.name;
    const ArgumentSpec* path = nullptr;
    for (const ArgumentSpec& argument : command.arguments) {
        if (argument.kind == ValueKind::kFile || argument.kind == ValueKind::kFolder) {
            path = &argument;
        }
    }
    if (!command.arguments.empty() && !command.arguments.front().choices.empty()) {
        const std::vector<std::string>& choices = command.arguments.front().choices;
        const std::string anyChoice = seen + Joined(choices, " ");
        script += "complete -c tarnexctl" + Condition(condition + "; and not " + anyChoice) +
                  Values(ValueKind::kChoice, choices) + "\n";
        condition += "; and " + anyChoice;
    }
    script += "complete -c tarnexctl" + Condition(condition) +
              (path == nullptr ? " -f" : Values(path->kind, {})) + "\n";
}

}  // namespace

std::string FishCompletion() {
    std::string script =
        "# fish completion for tarnexctl; put it as tarnexctl.fish into fish's completions.\n";
    for (const OptionSpec& option : CommonOptions()) AddOption("", option, script);
    for (const CommandSpec* command : OfferedCommands()) {
        script += "complete -c tarnexctl -n __fish_use_subcommand -f -a " + command->name + " -d " +
                  FishQuoted(command->summary) + "\n";
    }
    for (const CommandSpec* command : OfferedCommands()) {
        const std::string condition = Condition("__fish_seen_subcommand_from " + command->name);
        for (const OptionSpec& option : command->options) AddOption(condition, option, script);
        AddArguments(*command, script);
    }
    return script;
}

}  // namespace tarnexctl
