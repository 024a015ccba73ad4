#include "commands/Commands.h"
#include "description/LoadedDescription.h"
#include "drawing/Dot.h"
#include "drawing/Graph.h"
#include "drawing/GraphPicture.h"
#include "frame/Text.h"
#include "output/Format.h"
#include "output/ResultFile.h"

namespace tarnexctl {
namespace {

const std::vector<std::string>& GraphFormats() {
    static const std::vector<std::string> kFormats = {"dot", "svg"};
    return kFormats;
}

Json GraphDocument(const Graph& graph) {
    Json nodes = Json::array();
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const GraphNode& node = graph.nodes[i];
        Json entry = {{"name", node.name}, {"kind", DrawnKindWord(node.kind)}};
        if (!node.detail.empty()) entry["detail"] = node.detail;
        if (i > 0) entry["feeds"] = node.feeds;
        if (node.kind == DrawnKind::kProperty) entry["targetProperty"] = node.label;
        nodes.push_back(std::move(entry));
    }
    return nodes;
}

ExitCode RunGraph(const Arguments& arguments, Session& session) {
    const std::string name = arguments.ValueOr("FILE", "");
    (void)OutputName(arguments, name);
    const LoadedDescription loaded = LoadDescription(name);
    bool fine = ReportStatuses(loaded, session);
    const Graph graph = MakeGraph(loaded.Get());
    if (fine && graph.IsEmpty()) {
        session.Warn(InQuotes(name) + ": STRUCTURE is empty, nothing feeds the output");
        fine = false;
    }
    if (!session.JsonWanted() || arguments.Has("--output")) {
        const bool picture = WantedFormat(arguments, GraphFormats()) == "svg";
        WriteResult(arguments, session, name, picture ? GraphPicture(graph) : DotText(graph));
    }
    if (session.JsonWanted()) session.Document()["nodes"] = GraphDocument(graph);
    return fine ? ExitCode::kFine : ExitCode::kFindings;
}

}  // namespace

CommandSpec GraphCommand() {
    CommandSpec command;
    command.name = "graph";
    command.summary = "draws a composition's structure, as DOT or as an SVG picture";
    command.description = {
        "The file is a script or an archive. Sources stand at one side and the output at the "
        "other; sources, effects and mixes have shapes and colours of their own. Dashed lines come "
        "from the composition's properties: MAPPING ties each to the property of the effect that "
        "is written on the line. A name that STRUCTURE uses twice is drawn twice; mappings go to "
        "the first.",
        "The picture is drawn by this program alone. It has at most 5000 nodes; DOT has no limit.",
        "What was read of a script that is refused is drawn all the same. Exit code 1 when it is "
        "refused, a section of it ended at a statement that was, or nothing feeds the output."};
    command.arguments = {{"FILE", "The script or archive.", ValueKind::kFile}};
    command.options = {FormatOption(GraphFormats()), OutputOption("Write the drawing to a file.")};
    command.examples = {
        {"tarnexctl graph -o glow.svg glow.txt", "A picture of the structure."},
        {"tarnexctl graph glow.txt | dot -Tpng -o glow.png", "The same drawn by another program."}};
    command.run = RunGraph;
    return command;
}

}  // namespace tarnexctl
