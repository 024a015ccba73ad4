#include "commands/Commands.h"
#include "frame/Completion.h"
#include "frame/Session.h"

namespace tarnexctl {
namespace {

ExitCode RunCompletion(const Arguments& arguments, Session& session) {
    const std::string shell = arguments.ValueOr("SHELL", "");
    const std::string script = CompletionScript(shell);
    session.Document()["shell"] = shell;
    session.Document()["script"] = script;
    session.Out() << script;
    return ExitCode::kFine;
}

}  // namespace

CommandSpec CompletionCommand() {
    CommandSpec command;
    command.name = "completion";
    command.summary = "prints a script that completes commands and options in a shell";
    command.arguments = {
        {"SHELL", "The shell to print it for.", ValueKind::kChoice, CompletionShells()}};
    command.examples = {{"source <(tarnexctl completion bash)", "Completes in the running bash."},
                        {"tarnexctl completion fish > ~/.config/fish/completions/tarnexctl.fish",
                         "Completes in every fish from now on."}};
    command.run = RunCompletion;
    return command;
}

}  // namespace tarnexctl
