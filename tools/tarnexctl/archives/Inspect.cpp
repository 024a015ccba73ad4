#include <vector>

#include "archives/Actions.h"
#include "archives/ArchiveReading.h"
#include "description/AuthorText.h"
#include "description/LoadedDescription.h"
#include "frame/Columns.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

using compositions::CompositionDescription;

std::size_t NodeCount(const compositions::StructureNode& root) {
    std::size_t count = 0;
    std::vector<const compositions::StructureNode*> pending{&root};
    while (!pending.empty()) {
        const compositions::StructureNode* const node = pending.back();
        pending.pop_back();
        ++count;
        for (const auto& child : node->inputs) pending.push_back(&child);
        for (const auto& child : node->secondary) pending.push_back(&child);
    }
    return count;
}

// What each of the body's fields holds, in their order: how many elements, or the value itself.
std::vector<Json> HoldingsOf(const CompositionDescription& d) {
    return {d.inputs.size(),
            d.effectInstances.size(),
            d.mixes.size(),
            d.mediaSources.size(),
            d.mappings.size(),
            d.properties.size(),
            d.envelopes.size(),
            d.timelineEntries.size(),
            d.timelineEvents.size(),
            NodeCount(d.structure),
            AuthorText(d.name),
            AuthorText(d.category),
            d.numberedInputs.size(),
            d.registryValues.size(),
            d.isFilter,
            d.speed,
            d.swap};
}

std::string Cell(const Json& holding) {
    if (holding.is_string()) return "\"" + holding.get<std::string>() + "\"";
    if (holding.is_boolean()) return holding.get<bool>() ? "yes" : "no";
    return holding.dump();
}

}  // namespace

ExitCode InspectArchive(const std::string& file, const Arguments&, Session& session) {
    const std::string bytes = ReadInput(file);
    const ArchiveReading reading = ReadWholeArchive(file, bytes);
    const std::vector<Json> holdings = HoldingsOf(reading.description);
    Columns table({"OFFSET", "BYTES", "FIELD", "HOLDS"});
    table.AlignRight(0);
    table.AlignRight(1);
    Json& document = session.Document();
    document["version"] = reading.version;
    document["bytes"] = bytes.size();
    Json& fields = document["fields"] = Json::array();
    for (std::size_t i = 0; i < holdings.size(); ++i) {
        const std::uint64_t begin = reading.fieldOffsets[i];
        const bool isLast = i + 1 == holdings.size();
        const std::uint64_t size = (isLast ? reading.end : reading.fieldOffsets[i + 1]) - begin;
        table.Add(
            {std::to_string(begin), std::to_string(size), kArchiveFields.at(i), Cell(holdings[i])});
        fields.push_back({{"field", kArchiveFields.at(i)},
                          {"offset", begin},
                          {"bytes", size},
                          {"holds", holdings[i]}});
    }
    const std::uint64_t behind = bytes.size() - reading.end;
    document["bytesBehind"] = behind;
    session.Out() << Printable(ValidUtf8(file)) << ": archive, version "
                  << std::to_string(reading.version) << ", " << Count(bytes.size(), "byte", "bytes")
                  << "\n\n";
    table.Print(session.Out());
    if (behind > 0) {
        session.Out() << "\nBehind them: " << Count(behind, "byte", "bytes") << ", not read\n";
    }
    return ExitCode::kFine;
}

}  // namespace tarnexctl
