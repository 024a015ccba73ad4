#include "frame/CommandTable.h"

#include "commands/Commands.h"

namespace tarnexctl {

const std::vector<CommandSpec>& CommandTable() {
    // clang-format off
    static const std::vector<CommandSpec> kTable = {
        ListCommand(),
        InfoCommand(),
        CheckCommand(),
        ExplainCommand(),
        DumpCommand(),
        GraphCommand(),
        PlotCommand(),
        ArchiveCommand(),
        ProbeCommand(),
        DoctorCommand(),
        LogCommand(),
        CompletionCommand(),
        ManPageCommand(),
        HelpCommand(),
        // Hidden ones.
        ListChildCommand(),
        InfoChildCommand(),
        ProbeChildCommand(),
        OwnershipChildCommand(),
    };
    // clang-format on
    return kTable;
}

const CommandSpec* FindCommand(const std::string& name) {
    for (const CommandSpec& command : CommandTable()) {
        if (command.name == name) return &command;
    }
    return nullptr;
}

const std::vector<OptionSpec>& CommonOptions() {
    static const std::vector<OptionSpec> kOptions = {
        {"--json", "", "", "Print exactly one JSON document on standard output."},
        {"--color",
         "",
         "WHEN",
         "When to use colours; \"auto\" means on a terminal only.",
         ValueKind::kChoice,
         {"auto", "always", "never"}},
        {"--help", "-h", "", "Explain the command, with examples."},
        {"--version", "", "", "Print the program's version."},
    };
    return kOptions;
}

std::vector<const CommandSpec*> OfferedCommands() {
    std::vector<const CommandSpec*> offered;
    for (const CommandSpec& command : CommandTable()) {
        if (!command.hidden) offered.push_back(&command);
    }
    return offered;
}

}  // namespace tarnexctl
