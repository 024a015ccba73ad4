#include <algorithm>
#include <string_view>

#include "archives/Actions.h"
#include "archives/ArchiveReading.h"
#include "compositions/ArchiveBody.h"
#include "compositions/ArchiveHeader.h"
#include "compositions/ScriptArchive.h"
#include "description/LoadedDescription.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

constexpr std::size_t kNameField = 10;
constexpr std::size_t kCategoryField = 11;
constexpr std::size_t kFilterField = 14;

struct Remark {
    std::uint64_t offset;
    std::string text;
    bool isFinding;  // else it is a note, and the archive is as good as any
};

// What the library does not check and no script with status 0 gives.
void AddUnbelievable(const ArchiveReading& reading, std::vector<Remark>& remarks) {
    const compositions::CompositionDescription& d = reading.description;
    if (d.name.empty()) {
        remarks.push_back({reading.fieldOffsets[kNameField], "the name is empty", true});
    }
    if (d.category.empty()) {
        remarks.push_back({reading.fieldOffsets[kCategoryField], "the category is empty", true});
    }
    const std::size_t inputs = d.inputs.size() + d.numberedInputs.size();
    if (d.isFilter && inputs != 1) {
        remarks.push_back({reading.fieldOffsets[kFilterField],
                           "a filter with " + Count(inputs, "input", "inputs"), true});
    }
}

// Harmless differences from what this library writes: other programs may write so.
void AddNotes(const ArchiveReading& reading, std::string_view bytes, std::vector<Remark>& remarks) {
    if (reading.version != compositions::ScriptArchive::kWrittenVersion) {
        remarks.push_back(
            {compositions::kArchiveSignature.size(),
             "version " + std::to_string(reading.version) + ", which is read as version 2 is",
             false});
    }
    std::string written;
    compositions::SaveArchiveBody(reading.description, written);
    const std::string_view body = bytes.substr(compositions::kArchiveHeaderBytes,
                                               reading.end - compositions::kArchiveHeaderBytes);
    if (body != written) {
        const auto differs =
            std::mismatch(body.begin(), body.end(), written.begin(), written.end()).first;
        const auto offset = static_cast<std::uint64_t>(differs - body.begin());
        remarks.push_back({compositions::kArchiveHeaderBytes + offset,
                           "the library writes this description otherwise from here on", false});
    }
    if (reading.end < bytes.size()) {
        remarks.push_back({reading.end,
                           Count(bytes.size() - reading.end, "byte", "bytes") +
                               " behind the description, which are not read",
                           false});
    }
}

}  // namespace

ExitCode VerifyArchive(const std::string& file, const Arguments&, Session& session) {
    const std::string bytes = ReadInput(file);
    const ArchiveReading reading = ReadArchive(bytes);
    std::vector<Remark> remarks;
    if (reading.damage) {
        remarks.push_back({reading.damage->offset, reading.damage->reason, true});
    } else {
        AddUnbelievable(reading, remarks);
        AddNotes(reading, bytes, remarks);
    }
    bool fine = true;
    Json& findings = session.Document()["findings"] = Json::array();
    const std::string shownFile = Printable(ValidUtf8(file));
    for (const Remark& remark : remarks) {
        fine = fine && !remark.isFinding;
        const char* const level = remark.isFinding ? "error" : "note";
        session.Out() << shownFile << ": byte " << std::to_string(remark.offset) << ": "
                      << session.Out().Paint(remark.isFinding ? Style::kError : Style::kNote, level)
                      << ": " << remark.text << "\n";
        findings.push_back({{"offset", remark.offset}, {"level", level}, {"text", remark.text}});
    }
    session.Document()["damaged"] = reading.damage.has_value();
    session.Document()["bytes"] = bytes.size();
    if (fine) session.Out() << shownFile << ": whole\n";
    return fine ? ExitCode::kFine : ExitCode::kFindings;
}

}  // namespace tarnexctl
