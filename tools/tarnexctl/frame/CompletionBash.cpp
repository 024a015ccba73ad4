#include "frame/CommandTable.h"
#include "frame/Completion.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

std::vector<std::string> NamesOf(const std::vector<OptionSpec>& options) {
    std::vector<std::string> names;
    for (const OptionSpec& option : options) {
        if (!option.shortName.empty()) names.push_back(option.shortName);
        names.push_back(option.name);
    }
    return names;
}

// What fills the reply for a value of that kind.
std::string Offer(ValueKind kind, const std::vector<std::string>& choices) {
    switch (kind) {
        case ValueKind::kFile:
            return "_tarnexctl_paths -f";
        case ValueKind::kFolder:
            return "_tarnexctl_paths -d";
        case ValueKind::kChoice:
            return "_tarnexctl_words \"" + Joined(choices, " ") + "\"";
        default:
            return "COMPREPLY=()";
    }
}

// Offers each argument in its turn; the last one again and again when it may be repeated.
std::string ArgumentCases(const CommandSpec& command, const std::vector<OptionSpec>& options) {
    std::string valued;
    for (const OptionSpec& option : options) {
        if (!option.value.empty()) valued += option.shortName + " " + option.name + " ";
    }
    std::string script = "        else\n            _tarnexctl_count \"" + valued +
                         "\"\n            case $count in\n";
    for (std::size_t i = 0; i < command.arguments.size(); ++i) {
        const ArgumentSpec& argument = command.arguments[i];
        script += "            " + (argument.repeats ? "*" : std::to_string(i)) + ") " +
                  Offer(argument.kind, argument.choices) + " ;;\n";
    }
    return script + "            esac\n";
}

std::string CommandCase(const CommandSpec& command) {
    std::vector<OptionSpec> options = command.options;
    options.insert(options.end(), CommonOptions().begin(), CommonOptions().end());
    std::string script = "    " + command.name + ")\n        case $prev in\n";
    for (const OptionSpec& option : options) {
        if (option.value.empty()) continue;
        const std::string names =
            option.shortName.empty() ? option.name : option.shortName + "|" + option.name;
        script += "        " + names + ") " + Offer(option.kind, option.choices) + "; return ;;\n";
    }
    script += "        esac\n        if [[ $cur == -* ]]; then _tarnexctl_words \"" +
              Joined(NamesOf(options), " ") + "\"\n";
    if (!command.arguments.empty()) script += ArgumentCases(command, options);
    return script + "        fi ;;\n";
}

}  // namespace

std::string BashCompletion() {
    std::vector<std::string> commands;
    for (const CommandSpec* command : OfferedCommands()) commands.push_back(command->name);
    std::string script =
        "# bash completion for tarnexctl; put it into the folder of bash's completions, or:\n"
        "#   source <(tarnexctl completion bash)\n"
        "_tarnexctl_words() { mapfile -t COMPREPLY < <(compgen -W \"$1\" -- \"$cur\"); }\n"
        "_tarnexctl_paths() {\n"
        "    mapfile -t COMPREPLY < <(compgen \"$1\" -- \"$cur\")\n"
        "    compopt -o filenames 2>/dev/null\n"
        "}\n"
        "# How many arguments of the command stand before the cursor; $1 are options with a "
        "value.\n"
        "_tarnexctl_count() {\n"
        "    local i word\n"
        "    count=0\n"
        "    for ((i = first; i < COMP_CWORD; ++i)); do\n"
        "        word=${COMP_WORDS[i]}\n"
        "        if [[ \" $1 \" == *\" $word \"* ]]; then ((++i))\n"
        "        elif [[ $word != -* ]]; then ((++count)); fi\n"
        "    done\n"
        "}\n"
        "_tarnexctl() {\n"
        "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}\n"
        "    local command= word first count\n"
        "    COMPREPLY=()\n"
        "    for ((first = 1; first < COMP_CWORD; )); do\n"
        "        word=${COMP_WORDS[first++]}\n"
        "        case $word in " +
        Joined(commands, "|") +
        ") command=$word; break ;; esac\n"
        "    done\n"
        "    case $command in\n"
        "    '') _tarnexctl_words \"" +
        Joined(commands, " ") + " " + Joined(NamesOf(CommonOptions()), " ") + "\" ;;\n";
    for (const CommandSpec* command : OfferedCommands()) script += CommandCase(*command);
    return script + "    esac\n}\ncomplete -F _tarnexctl tarnexctl tarnexctl.exe\n";
}

}  // namespace tarnexctl
