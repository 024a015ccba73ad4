#include <algorithm>

#include "commands/Commands.h"
#include "description/AuthorText.h"
#include "description/DescriptionDocument.h"
#include "description/LoadedDescription.h"
#include "drawing/EnvelopePicture.h"
#include "frame/Suggest.h"
#include "frame/Text.h"
#include "output/Csv.h"
#include "output/Format.h"
#include "output/ResultFile.h"

namespace tarnexctl {
namespace {

using compositions::Envelopes;

const std::vector<std::string>& PlotFormats() {
    static const std::vector<std::string> kFormats = {"csv", "svg"};
    return kFormats;
}

std::string UpperAscii(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - ('a' - 'A'));
    }
    return text;
}

// Those of --envelope, or all.
Envelopes Wanted(const Envelopes& all, const Arguments& arguments) {
    const std::vector<std::string> names = arguments.Values("--envelope");
    if (names.empty()) return all;
    std::vector<std::string> known;
    for (const auto& [name, envelope] : all) known.push_back(AuthorText(name.View()));
    Envelopes wanted;
    for (const std::string& name : names) {
        const auto found = std::find(known.begin(), known.end(), UpperAscii(name));
        if (found == known.end()) {
            const auto meant = Suggest(name, known);
            throw Failure(ExitCode::kNotFound, "there is no envelope " + InQuotes(name),
                          meant ? "did you mean " + InQuotes(*meant) + "?" : "");
        }
        wanted.insert(*std::next(all.begin(), found - known.begin()));
    }
    return wanted;
}

std::string CsvOf(const Envelopes& envelopes) {
    std::string text = CsvRow({"envelope", "count", "point", "time", "value", "kind",
                               "firstParameter", "secondParameter"});
    for (const auto& [name, envelope] : envelopes) {
        for (std::size_t i = 0; i < envelope.keys.size(); ++i) {
            const compositions::EnvelopeKey& key = envelope.keys[i];
            text +=
                CsvRow({AuthorText(name.View()), AuthorText(envelope.count), std::to_string(i + 1),
                        AuthorText(key.time), AuthorText(key.value), AuthorText(key.kind.View()),
                        AuthorText(key.firstParameter), AuthorText(key.secondParameter)});
        }
    }
    return text;
}

ExitCode RunPlot(const Arguments& arguments, Session& session) {
    const std::string name = arguments.ValueOr("FILE", "");
    (void)OutputName(arguments, name);
    const LoadedDescription loaded = LoadDescription(name);
    bool fine = ReportStatuses(loaded, session);
    const Envelopes envelopes = Wanted(loaded.Get().envelopes, arguments);
    if (fine && envelopes.empty()) session.Warn(InQuotes(name) + " has no envelopes");
    if (!session.JsonWanted() || arguments.Has("--output")) {
        std::vector<std::string> problems;
        const bool picture = WantedFormat(arguments, PlotFormats()) == "svg";
        const std::string title = Printable(AuthorText(loaded.Get().name));
        WriteResult(arguments, session, name,
                    picture ? EnvelopePicture(title, envelopes, problems) : CsvOf(envelopes));
        for (const std::string& problem : problems) session.Warn(problem);
        fine = fine && problems.empty();
    }
    session.Document()["envelopes"] = EnvelopesDocument(envelopes);
    return fine ? ExitCode::kFine : ExitCode::kFindings;
}

}  // namespace

CommandSpec PlotCommand() {
    CommandSpec command;
    command.name = "plot";
    command.summary = "shows a composition's envelopes, as a table or as an SVG picture";
    command.description = {
        "The file is a script or an archive. The table (CSV) and the picture hold the points as "
        "they were written. What lies between two points is the engine's to decide, so the picture "
        "only joins them: held behind HOLD, straight behind LINEAR, and by a dashed line behind "
        "the other kinds, whose curves it does not pretend to know.",
        "Exit code 1 when the script is refused, a section of it ended at a statement that was, or "
        "a point is written with a number that has no place in a picture."};
    command.arguments = {{"FILE", "The script or archive.", ValueKind::kFile}};
    command.options = {FormatOption(PlotFormats()),
                       {"--envelope",
                        "-e",
                        "NAME",
                        "This envelope only; may be given again.",
                        ValueKind::kText,
                        {},
                        true},
                       OutputOption("Write the table or picture to a file.")};
    command.examples = {
        {"tarnexctl plot elastic_wipe.txt", "Every point of every envelope."},
        {"tarnexctl plot -e Travel -o travel.svg elastic_wipe.txt", "A picture of one envelope."}};
    command.run = RunPlot;
    return command;
}

}  // namespace tarnexctl
