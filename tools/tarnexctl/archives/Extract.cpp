#include "archives/Actions.h"
#include "archives/ArchiveReading.h"
#include "description/LoadedDescription.h"
#include "extraction/ScriptOf.h"
#include "frame/Text.h"
#include "output/ResultFile.h"

namespace tarnexctl {
namespace {

void Put(const ExtractedScript& script, const std::string& file, const std::string& output,
         Session& session) {
    if (!output.empty()) {
        WriteResultFile(output, script.bytes);
        session.Document()["output"] = output;
        return;
    }
    if (!IsValidUtf8(script.bytes)) {
        throw Failure(ExitCode::kInputOutput,
                      "the script of " + InQuotes(file) + " holds bytes that are no UTF-8",
                      "--output writes them to a file as they are");
    }
    session.Out() << script.bytes;
    session.Document()["script"] = script.bytes;
}

}  // namespace

ExitCode ExtractArchive(const std::string& file, const Arguments& arguments, Session& session) {
    const std::string output = OutputName(arguments, file);
    const std::string bytes = ReadInput(file);
    const ExtractedScript script = ScriptOf(ReadWholeArchive(file, bytes).description);
    Put(script, file, output, session);
    Json& gaps = session.Document()["gaps"] = Json::array();
    for (const Gap& gap : script.gaps) {
        session.Warn("no script can say " + Printable(ValidUtf8(gap.where)) + ": " + gap.why);
        gaps.push_back({{"where", gap.where}, {"why", gap.why}});
    }
    return script.gaps.empty() ? ExitCode::kFine : ExitCode::kFindings;
}

}  // namespace tarnexctl
