#include "commands/Commands.h"
#include "frame/ManPage.h"
#include "frame/Session.h"

namespace tarnexctl {
namespace {

ExitCode RunManPage(const Arguments&, Session& session) {
    const std::string page = ManPage();
    session.Document()["page"] = page;
    session.Out() << page;
    return ExitCode::kFine;
}

}  // namespace

CommandSpec ManPageCommand() {
    CommandSpec command;
    command.name = "manpage";
    command.summary = "prints the manual page";
    command.examples = {
        {"tarnexctl manpage | man -l -", "Shows the manual page."},
        {"tarnexctl manpage > /usr/local/share/man/man1/tarnexctl.1", "Installs it."}};
    command.run = RunManPage;
    return command;
}

}  // namespace tarnexctl
