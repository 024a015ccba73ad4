// Hidden: lists the effects of libraries in this process, one after the other, for "list".

#include "commands/Commands.h"
#include "frame/Session.h"
#include "platform/ChildProcess.h"
#include "probe/ChildReport.h"
#include "probe/OwnFactory.h"

namespace tarnexctl {
namespace {

ExitCode RunListChild(const Arguments& arguments, Session&) {
    ChildReport report;
    for (const std::string& path : arguments.Values("LIBRARY")) {
        report.Value("library", ListLibrary(path, report));
    }
    report.Done();
    platform::EndProcess(0);  // what the libraries do at the end of a process is not asked here
}

}  // namespace

CommandSpec ListChildCommand() {
    CommandSpec command;
    command.name = "list-child";
    command.summary = "lists libraries' effects in this process";
    command.arguments = {{"LIBRARY", "Absolute paths.", ValueKind::kFile, {}, true, true}};
    command.run = RunListChild;
    command.hidden = true;
    return command;
}

}  // namespace tarnexctl
