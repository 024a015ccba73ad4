#include "frame/CommandTable.h"
#include "frame/Completion.h"

namespace tarnexctl {
namespace {

std::string PowerShellQuoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
    return quoted + "'";
}

std::string List(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list += (list.empty() ? "" : ", ") + PowerShellQuoted(word);
    return "@(" + list + ")";
}

}  // namespace

// Files and folders are completed by the shell itself wherever this offers nothing.
std::string PowerShellCompletion() {
    std::string script =
        "# PowerShell completion for tarnexctl; add it to $PROFILE, or:\n"
        "#   tarnexctl completion powershell | Out-String | Invoke-Expression\n"
        "Register-ArgumentCompleter -Native -CommandName tarnexctl, tarnexctl.exe -ScriptBlock {\n"
        "    param($wordToComplete, $commandAst, $cursorPosition)\n"
        "    $commands = [ordered]@{\n";
    for (const CommandSpec* command : OfferedCommands()) {
        script += "        " + PowerShellQuoted(command->name) + " = " +
                  PowerShellQuoted(command->summary) + "\n";
    }
    script += "    }\n    $options = @{\n";
    std::string choices;
    for (const CommandSpec* command : OfferedCommands()) {
        std::vector<std::string> names;
        for (const auto& options : {command->options, CommonOptions()}) {
            for (const OptionSpec& option : options) {
                names.push_back(option.name);
                if (option.choices.empty()) continue;
                for (const std::string& name : {option.name, option.shortName}) {
                    if (name.empty()) continue;
                    choices += "        " + PowerShellQuoted(command->name + " " + name) + " = " +
                               List(option.choices) + "\n";
                }
            }
        }
        if (!command->arguments.empty() && !command->arguments.front().choices.empty()) {
            choices += "        " + PowerShellQuoted(command->name) + " = " +
                       List(command->arguments.front().choices) + "\n";
        }
        script += "        " + PowerShellQuoted(command->name) + " = " + List(names) + "\n";
    }
    return script + "    }\n    $choices = @{\n" + choices +
           "    }\n"
           "    $words = @($commandAst.CommandElements | ForEach-Object { $_.ToString() })\n"
           "    if ($wordToComplete) { $words = @($words | Select-Object -SkipLast 1) }\n"
           "    $command = $words | Select-Object -Skip 1 | Where-Object { $commands.Contains($_) }"
           " | Select-Object -First 1\n"
           "    if (-not $command) { $offered = @($commands.Keys) }\n"
           "    elseif ($choices.ContainsKey(\"$command $($words[-1])\")) {"
           " $offered = $choices[\"$command $($words[-1])\"] }\n"
           "    elseif ($wordToComplete -like '-*') { $offered = $options[$command] }\n"
           "    else {\n"
           "        $offered = @($choices[$command])\n"
           "        if ($words | Where-Object { $_ -in $offered }) { $offered = @() }\n"
           "    }\n"
           "    $offered | Where-Object { $_ -and $_ -like \"$wordToComplete*\" } |"
           " ForEach-Object {\n"
           "        $what = if ($commands.Contains($_)) { $commands[$_] } else { $_ }\n"
           "        [System.Management.Automation.CompletionResult]::new("
           "$_, $_, 'ParameterValue', $what)\n"
           "    }\n"
           "}\n";
}

}  // namespace tarnexctl
