#include "frame/CommandTable.h"
#include "frame/Completion.h"

namespace tarnexctl {
namespace {

// Within single quotes, in a text where brackets and colons have a meaning.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\'') {
            escaped += "'\\''";
        } else {
            if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
            escaped += c;
        }
    }
    return escaped;
}

std::string Action(ValueKind kind, const std::vector<std::string>& choices) {
    if (kind == ValueKind::kFile) return "_files";
    if (kind == ValueKind::kFolder) return "_files -/";
    std::string list;
    for (const std::string& choice : choices) list += (list.empty() ? "" : " ") + choice;
    return list.empty() ? " " : "(" + list + ")";
}

void AddOption(const OptionSpec& option, const std::string& name, std::string& script) {
    script += " \\\n            '" + std::string(option.repeats ? "*" : "") + name + "[" +
              Escaped(option.help) + "]";
    if (!option.value.empty()) {
        script += ":" + Escaped(option.value) + ":" + Action(option.kind, option.choices);
    }
    script += "'";
}

void AddOptions(const std::vector<OptionSpec>& options, std::string& script) {
    for (const OptionSpec& option : options) {
        if (!option.shortName.empty()) AddOption(option, option.shortName, script);
        AddOption(option, option.name, script);
    }
}

}  // namespace

std::string ZshCompletion() {
    std::string script =
        "#compdef tarnexctl tarnexctl.exe\n"
        "# zsh completion for tarnexctl; put it as _tarnexctl into a folder of $fpath.\n"
        "_tarnexctl() {\n"
        "    local -a commands\n"
        "    commands=(\n";
    for (const CommandSpec* command : OfferedCommands()) {
        script += "        '" + command->name + ":" + Escaped(command->summary) + "'\n";
    }
    script +=
        "    )\n"
        "    if (( CURRENT == 2 )); then _describe command commands; return; fi\n"
        "    local command=$words[2]\n"
        "    words=($command $words[3,-1]); (( CURRENT-- ))\n"
        "    case $command in\n";
    for (const CommandSpec* command : OfferedCommands()) {
        script += "    " + command->name + ")\n        _arguments";
        AddOptions(command->options, script);
        AddOptions(CommonOptions(), script);
        for (const ArgumentSpec& argument : command->arguments) {
            script += std::string(" \\\n            '") + (argument.repeats ? "*:" : ":") +
                      Escaped(argument.name) + ":" + Action(argument.kind, argument.choices) + "'";
        }
        script += " ;;\n";
    }
    return script + "    esac\n}\n_tarnexctl \"$@\"\n";
}

}  // namespace tarnexctl
