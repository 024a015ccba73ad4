#include "archives/Actions.h"
#include "commands/Commands.h"
#include "output/ResultFile.h"

namespace tarnexctl {
namespace {

struct Action {
    const char* name;
    ExitCode (*run)(const std::string& file, const Arguments& arguments, Session& session);
    bool writes;  // and takes --output
};

constexpr Action kActions[] = {{"compile", CompileArchive, true},
                               {"inspect", InspectArchive, false},
                               {"verify", VerifyArchive, false},
                               {"extract", ExtractArchive, true}};

ExitCode RunArchive(const Arguments& arguments, Session& session) {
    const std::string name = arguments.ValueOr("ACTION", "");
    for (const Action& action : kActions) {
        if (name != action.name) continue;
        if (!action.writes && arguments.Has("--output")) {
            throw Failure(ExitCode::kUsage, "\"archive " + name + "\" writes no file");
        }
        session.Document()["action"] = name;
        return action.run(arguments.ValueOr("FILE", ""), arguments, session);
    }
    throw Failure(ExitCode::kUsage, "there is no action \"" + name + "\"");
}

}  // namespace

CommandSpec ArchiveCommand() {
    CommandSpec command;
    command.name = "archive";
    command.summary = "writes, examines and reads back the archive of a script";
    command.description = {
        "\"compile\" writes the archive (.mxf) beside a script, as the library itself does when "
        "its settings ask for it: whole or not at all. A script that the library refuses gets "
        "none, and a file that is no archive is never replaced.",
        "\"inspect\" shows the header and what each field holds. \"verify\" names the first bad "
        "byte by its offset, and notes what the library itself would have written otherwise.",
        "\"extract\" turns an archive back into a script that reads to the very same description. "
        "An archive may hold what no script can say; that is left out and named.",
        "Exit code 1 when the script is refused or a section of it ended at a statement that was, "
        "when the archive is damaged (verify), or when something could not be said (extract)."};
    ArgumentSpec action{"ACTION", "What to do: compile, inspect, verify or extract.",
                        ValueKind::kChoice};
    for (const Action& each : kActions) action.choices.emplace_back(each.name);
    command.arguments = {action,
                         {"FILE", "A script to compile, else an archive.", ValueKind::kFile}};
    command.options = {OutputOption("With compile and extract: write to this file.")};
    command.examples = {{"tarnexctl archive compile glow.txt", "Writes glow.mxf beside it."},
                        {"tarnexctl archive verify glow.mxf", "Looks for damage."},
                        {"tarnexctl archive extract -o glow.txt glow.mxf", "Back to a script."}};
    command.run = RunArchive;
    return command;
}

}  // namespace tarnexctl
