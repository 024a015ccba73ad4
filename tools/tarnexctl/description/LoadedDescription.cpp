#include "description/LoadedDescription.h"

#include <string_view>
#include <utility>

#include "archives/ArchiveReading.h"
#include "compositions/ArchiveHeader.h"
#include "frame/InputFile.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

namespace status = compositions::status;
using compositions::Section;

LoadedDescription FromArchive(const std::string& name, std::string_view bytes) {
    ArchiveReading reading = ReadWholeArchive(name, bytes);
    return {name, true, reading.version,
            std::make_shared<compositions::CompositionScript>(std::move(reading.description))};
}

LoadedDescription FromScript(const std::string& name, std::string_view bytes) {
    RequireScriptSize(name, bytes.size());
    LoadedDescription loaded{name, false, 0,
                             std::make_shared<compositions::CompositionScript>(bytes)};
    if (loaded.script->GetReadStatus() == status::kNoSetup &&
        bytes.find('\0') != std::string_view::npos) {
        throw Failure(ExitCode::kInputOutput,
                      InQuotes(name) + " is neither a script nor an archive",
                      "it holds zero bytes; scripts have one byte for each letter");
    }
    return loaded;
}

// Sections that may be missing.
bool IsMissing(std::int32_t sectionStatus) {
    return sectionStatus == status::kNoProperties || sectionStatus == status::kNoMapping ||
           sectionStatus == status::kNoEnvelopes || sectionStatus == status::kNoTimeline;
}

}  // namespace

std::string ReadInput(const std::string& name) {
    const std::filesystem::path path = ExistingFile(name);
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        throw Failure(ExitCode::kInputOutput, InQuotes(name) + " is not a plain file");
    }
    std::ifstream file = OpenInput(path, name);
    std::string bytes(static_cast<std::size_t>(std::filesystem::file_size(path, error)), '\0');
    if (!error) file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (error || file.gcount() != static_cast<std::streamsize>(bytes.size())) {
        throw Failure(ExitCode::kInputOutput, InQuotes(name) + " cannot be read");
    }
    return bytes;
}

void RequireScriptSize(const std::string& name, std::uint64_t bytes) {
    // Larger than any script that a person writes; what is made of it takes some hundred times the
    // size in memory when the worst comes together.
    constexpr std::uint64_t kLargest = 16 * 1024 * 1024;
    if (bytes <= kLargest) return;
    throw Failure(
        ExitCode::kInputOutput,
        InQuotes(name) + " has " + std::to_string(bytes) + " bytes: no script is as large",
        "up to " + std::to_string(kLargest) + " bytes are read");
}

bool IsArchive(std::string_view bytes) {
    return bytes.starts_with(compositions::kArchiveSignature);
}

LoadedDescription LoadDescription(const std::string& name) {
    const std::string bytes = ReadInput(name);
    return IsArchive(bytes) ? FromArchive(name, bytes) : FromScript(name, bytes);
}

bool ReportStatuses(const LoadedDescription& loaded, Session& session) {
    if (loaded.isArchive) return true;
    const auto warn = [&](std::int32_t value, const char* section) {
        session.Warn(Printable(ValidUtf8(loaded.file)) + ": " + section + "status " +
                     std::to_string(value) + ", " + compositions::ReadStatusText(value));
    };
    const std::int32_t whole = loaded.script->GetReadStatus();
    if (whole != status::kRead) {
        warn(whole, "");
        return false;
    }
    bool fine = true;
    for (const Section section :
         {Section::kProperties, Section::kMapping, Section::kEnvelopes, Section::kTimeline}) {
        const std::int32_t value = loaded.script->GetSectionStatuses()[section];
        if (value == status::kRead || IsMissing(value)) continue;
        warn(value,
             (std::string(compositions::SectionKeyword(section)) + " ended early: ").c_str());
        fine = false;
    }
    return fine;
}

}  // namespace tarnexctl
