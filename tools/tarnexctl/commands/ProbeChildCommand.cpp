// Hidden: runs the conformance of one library in this process, for "probe".

#include "commands/Commands.h"
#include "frame/Session.h"
#include "probe/ChildReport.h"
#include "probe/Conformance.h"

namespace tarnexctl {
namespace {

ExitCode RunProbeChild(const Arguments& arguments, Session&) {
    ChildReport report;
    ConformanceScope scope;
    scope.rendering = !arguments.Has("--no-rendering");
    RunConformance(arguments.ValueOr("LIBRARY", ""), scope, report);
    report.Step("the end of the process");
    report.Done();
    return ExitCode::kFine;
}

}  // namespace

CommandSpec ProbeChildCommand() {
    CommandSpec command;
    command.name = "probe-child";
    command.summary = "runs one library's conformance in this process";
    command.arguments = {{"LIBRARY", "The library.", ValueKind::kFile}};
    command.options = {{"--no-rendering", "", "", "Leave the rendering operations out."}};
    command.run = RunProbeChild;
    command.hidden = true;
    return command;
}

}  // namespace tarnexctl
