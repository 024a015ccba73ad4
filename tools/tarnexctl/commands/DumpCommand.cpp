#include "commands/Commands.h"
#include "description/DescriptionDocument.h"
#include "output/ResultFile.h"

namespace tarnexctl {
namespace {

ExitCode RunDump(const Arguments& arguments, Session& session) {
    const std::string name = arguments.ValueOr("FILE", "");
    (void)OutputName(arguments, name);  // said before a long script is read
    const LoadedDescription loaded = LoadDescription(name);
    const bool fine = ReportStatuses(loaded, session);
    Json description = DescriptionDocument(loaded);
    if (!session.JsonWanted() || arguments.Has("--output")) {
        WriteResult(arguments, session, name,
                    description.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
    }
    session.Document().update(description);
    return fine ? ExitCode::kFine : ExitCode::kFindings;
}

}  // namespace

CommandSpec DumpCommand() {
    CommandSpec command;
    command.name = "dump";
    command.summary = "prints a composition's whole description as JSON";
    command.description = {
        "The file is a script or an archive; its content decides which. The document holds all "
        "that the library keeps of it, exactly as it keeps it, with the status of every section. "
        "docs/description.schema.json describes it.",
        "A script that the library refuses is shown as far as it was read. Exit code 1 when it is "
        "refused, or a section of it ended at a statement that was."};
    command.arguments = {{"FILE", "The script or archive.", ValueKind::kFile}};
    command.options = {OutputOption("Write the document to a file.")};
    command.examples = {{"tarnexctl dump glow.txt", "The description on standard output."},
                        {"tarnexctl dump -o glow.json glow.mxf", "An archive's, in a file."}};
    command.run = RunDump;
    return command;
}

}  // namespace tarnexctl
