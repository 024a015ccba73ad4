#include "commands/Commands.h"
#include "frame/CommandTable.h"
#include "frame/Help.h"
#include "frame/Session.h"

namespace tarnexctl {
namespace {

ExitCode RunHelp(const Arguments& arguments, Session& session) {
    const auto name = arguments.Value("COMMAND");
    if (!name) {
        PrintProgramHelp(session.Out());
        Json& commands = session.Document()["commands"] = Json::array();
        for (const CommandSpec* command : OfferedCommands()) commands.push_back(command->name);
        return ExitCode::kFine;
    }
    const CommandSpec* const command = FindCommand(*name);
    if (command == nullptr) {
        throw Failure(ExitCode::kNotFound, "there is no command \"" + *name + "\"");
    }
    PrintCommandHelp(session.Out(), *command);
    session.Document()["usage"] = UsageLine(*command);
    return ExitCode::kFine;
}

}  // namespace

CommandSpec HelpCommand() {
    CommandSpec command;
    command.name = "help";
    command.summary = "explains a command";
    command.arguments = {{"COMMAND",
                          "The command to explain; all are listed without one.",
                          ValueKind::kText,
                          {},
                          false}};
    command.examples = {{"tarnexctl help log", "The same as \"tarnexctl log --help\"."}};
    command.run = RunHelp;
    return command;
}

}  // namespace tarnexctl
