#include "compositions/CompScript.h"

#include <optional>
#include <string_view>
#include <utility>

#include "compositions/CompScriptSections.h"
#include "compositions/ReadingReport.h"
#include "compositions/ScriptCursor.h"
#include "compositions/language/CompInterpreter.h"

namespace compositions {
namespace {

using SectionReader = std::int32_t (*)(ScriptCursor&, CompositionDescription&);

struct SectionStep {
    Section section;
    SectionReader read;
    bool isMandatory;  // its status is the script's, and ends the reading
};

// In the order of reading: later sections look up what earlier ones declared.
constexpr SectionStep kSteps[kSectionCount] = {
    {Section::kSetup, ReadSetup, true},
    {Section::kSources, ReadSources, true},
    {Section::kEffects, ReadEffects, true},
    {Section::kStructure, ReadStructure, true},
    {Section::kProperties, ReadProperties, false},
    {Section::kMapping, ReadMapping, false},
    {Section::kEnvelopes, ReadEnvelopes, false},
    {Section::kTimeline, ReadTimeline, false},
};

std::int32_t ReadSections(ScriptCursor& cursor, CompositionDescription& description,
                          SectionStatuses& statuses) {
    for (const SectionStep& step : kSteps) {
        const std::int32_t result = cursor.End(step.read(cursor, description));
        statuses[step.section] = result;
        if (step.isMandatory && result != status::kRead) return result;
    }
    const std::size_t inputs = description.inputs.size() + description.numberedInputs.size();
    return description.isFilter && inputs != 1 ? status::kFilterNeedsOneInput : status::kRead;
}

// Without the blank that follows them in memory.
std::string_view FileBytes(const CompositionScript::ScriptFile& file) {
    std::string_view bytes = file.Bytes();
    if (!bytes.empty()) bytes.remove_suffix(1);
    return bytes;
}

}  // namespace

CompositionScript::CompositionScript(const ScriptFile& file, ReadingObserver* observer)
    : interpreter_(std::make_shared<CompInterpreter>(file)) {
    Read(FileBytes(file), observer);
}

CompositionScript::CompositionScript(std::string_view bytes, ReadingObserver* observer)
    : interpreter_(std::make_shared<CompInterpreter>(bytes)) {
    Read(bytes, observer);
}

CompositionScript::CompositionScript(CompositionDescription description, std::int32_t readStatus)
    : readStatus_(readStatus), description_(std::move(description)) {}

void CompositionScript::Read(std::string_view bytes, ReadingObserver* observer) {
    std::optional<ReadingReport> report;
    if (observer) report.emplace(*observer, bytes, interpreter_->Text());
    ScriptCursor cursor(*interpreter_, report ? &*report : nullptr);
    readStatus_ = ReadSections(cursor, description_, sectionStatuses_);
}

}  // namespace compositions
