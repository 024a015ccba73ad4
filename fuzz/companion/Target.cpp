// What the companion's "check" and "archive" do with a file that anybody may have written: an
// archive when it begins like one, else a script.

#include <string>
#include <utility>

#include "Fuzz.h"
#include "TempFile.h"
#include "archives/Actions.h"
#include "archives/ArchiveReading.h"
#include "check/CheckReport.h"
#include "check/ScriptCheck.h"
#include "compositions/ArchiveBody.h"
#include "compositions/CompScript.h"
#include "compositions/archive/PlainDescription.h"
#include "description/DescriptionDocument.h"
#include "description/LoadedDescription.h"
#include "extraction/ScriptOf.h"
#include "frame/ProgressLine.h"
#include "frame/Session.h"
#include "helpers/report/CapturedOutput.h"

using namespace tarnexctl;
using compositions::CompositionDescription;
using compositions::CompositionScript;

namespace {

constexpr std::size_t kPlainReaderLimit = 20000;  // it calls itself for every nested node

std::string BodyOf(const CompositionDescription& description) {
    std::string bytes;
    compositions::SaveArchiveBody(description, bytes);
    return bytes;
}

// The script that comes out reads to what went in, or the companion says what does not.
void CheckExtraction(const CompositionDescription& description) {
    const ExtractedScript script = ScriptOf(description);
    if (!script.gaps.empty()) return;
    const CompositionScript again(std::string_view(script.bytes));
    fuzz::Check(again.GetReadStatus() == 0, "the extracted script does not read");
    fuzz::Check(BodyOf(again.GetDescription()) == BodyOf(description),
                "the extracted script reads differently");
}

void CheckDocument(CompositionDescription description, bool isArchive) {
    LoadedDescription loaded;
    loaded.file = "file";
    loaded.isArchive = isArchive;
    loaded.script = std::make_shared<CompositionScript>(std::move(description));
    fuzz::Check(!DescriptionDocument(loaded).dump().empty(), "no document");
}

void CheckScript(const std::string& bytes) {
    const CompositionScript script{std::string_view(bytes)};
    const ScriptVerdict verdict = ScriptChecker().Check(bytes);
    fuzz::Check(verdict.readStatus == script.GetReadStatus(), "the verdict's status");
    fuzz::Check(verdict.sections == script.GetSectionStatuses(), "the verdict's sections");
    const bool isRefused = script.GetReadStatus() != 0;
    fuzz::Check(!isRefused || CountOf(verdict.diagnostics, Severity::kError, false) > 0,
                "a refused script without an error");

    ProgressLine line;
    Writer out(platform::Stream::kOutput, line);
    out.Mute();
    PrintVerdict(out, "file", bytes, verdict, false);
    PrintShortVerdict(out, "file", bytes, verdict, true);
    fuzz::Check(!VerdictDocument("file", bytes, verdict, false).dump().empty(), "no document");
    for (const Diagnostic& diagnostic : verdict.diagnostics.List()) {
        fuzz::Check(
            diagnostic.range.begin <= diagnostic.range.end && diagnostic.range.end <= bytes.size(),
            "a place outside the script");
    }
    CheckDocument(script.GetDescription(), false);
    if (!isRefused)
        CheckExtraction(ReadArchive(plain::Write(script.GetDescription()).bytes).description);
}

template <class Action>
ExitCode Act(Action action, const fuzz::TempFile& file) {
    Session session("archive", true, ColourMode::kNever);
    session.Err().Mute();
    try {
        const std::u8string name = file.Native().u8string();
        const ExitCode code = action({name.begin(), name.end()}, Arguments(), session);
        fuzz::Check(!session.Document().dump().empty(), "no document");
        return code;
    } catch (const Failure& failure) {
        return failure.Code();
    }
}

void CheckArchive(const std::string& bytes) {
    static fuzz::TempFile file("companion");
    file.Write(bytes);
    const ArchiveReading reading = ReadArchive(bytes);
    if (bytes.size() <= kPlainReaderLimit) {
        const plain::Reading expected = plain::Read(bytes);
        fuzz::Check(reading.damage.has_value() != (expected.whole && expected.version >= 1),
                    "whether it is damaged");
        fuzz::Check(reading.damage || plain::Of(reading.description) == expected.description,
                    "reads differently");
    }
    if (reading.damage) fuzz::Check(reading.damage->offset <= bytes.size(), "where it is damaged");
    const ExitCode inspected = Act(InspectArchive, file);
    fuzz::Check(inspected == (reading.damage ? ExitCode::kInputOutput : ExitCode::kFine),
                "inspect's code");
    const ExitCode verified = Act(VerifyArchive, file);
    fuzz::Check(verified == ExitCode::kFindings || (verified == ExitCode::kFine && !reading.damage),
                "verify's code");
    const ExitCode extracted = Act(ExtractArchive, file);
    fuzz::Check(!reading.damage || extracted == ExitCode::kInputOutput, "extract's code");
    if (reading.damage) return;
    CheckDocument(reading.description, true);
    CheckExtraction(reading.description);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (IsArchive(bytes)) {
        CheckArchive(bytes);
    } else {
        CheckScript(bytes);
    }
    captured::TakeTraced();
    captured::TakeDebugged();
    return 0;
}
