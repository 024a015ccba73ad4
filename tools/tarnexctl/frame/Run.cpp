#include "frame/Run.h"

#include <exception>

#include "frame/CommandLine.h"
#include "frame/CommandTable.h"
#include "frame/Help.h"
#include "frame/Session.h"
#include "frame/Version.h"

namespace tarnexctl {
namespace {

ColourMode WantedColour(const Arguments& arguments) {
    const std::string mode = arguments.ValueOr("--color", "auto");
    if (mode == "always") return ColourMode::kAlways;
    return mode == "never" ? ColourMode::kNever : ColourMode::kAuto;
}

// Help and version are results: they go to standard output, into the document when JSON was asked
// for.
ExitCode RunWithoutCommand(const CommandLine& line, Session& session) {
    if (line.arguments.Has("--version")) {
        session.Out() << VersionLine() << "\n";
        session.Document()["version"] = VersionDocument();
        return ExitCode::kFine;
    }
    if (line.arguments.Has("--help")) {
        if (line.command != nullptr) {
            PrintCommandHelp(session.Out(), *line.command);
            session.Document()["usage"] = UsageLine(*line.command);
        } else {
            PrintProgramHelp(session.Out());
            Json& commands = session.Document()["commands"] = Json::array();
            for (const CommandSpec* command : OfferedCommands()) commands.push_back(command->name);
        }
        return ExitCode::kFine;
    }
    PrintProgramHelp(session.Err());
    throw Failure(ExitCode::kUsage, "no command was given");
}

int RunCommand(const CommandLine& line) {
    const Arguments& arguments = line.arguments;
    const std::string name = line.command == nullptr ? "" : line.command->name;
    Session session(name, arguments.Has("--json"), WantedColour(arguments));
    ExitCode code;
    try {
        const bool alone =
            line.command == nullptr || arguments.Has("--help") || arguments.Has("--version");
        code = session.Finish(alone ? RunWithoutCommand(line, session)
                                    : line.command->run(arguments, session));
    } catch (const Failure& failure) {
        code = session.Finish(failure);
    } catch (const std::exception& error) {
        code = session.Finish(Failure(ExitCode::kInternal, std::string("internal: ") + error.what(),
                                      "this is a defect of tarnexctl; please report it"));
    }
    return static_cast<int>(code);
}

}  // namespace

int Run(const std::vector<std::string>& arguments) {
    try {
        return RunCommand(ReadCommandLine(arguments));
    } catch (const Failure& failure) {
        const CommandLine line = ReadCommonOptions(arguments);
        const Arguments& options = line.arguments;
        Session session(line.command == nullptr ? "" : line.command->name, options.Has("--json"),
                        WantedColour(options));
        return static_cast<int>(session.Finish(failure));
    } catch (...) {
        return static_cast<int>(ExitCode::kInternal);
    }
}

}  // namespace tarnexctl
