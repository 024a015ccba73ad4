#include <filesystem>
#include <fstream>

#include "archives/Actions.h"
#include "compositions/ArchiveHeader.h"
#include "compositions/ArchivePath.h"
#include "compositions/ArchiveWriter.h"
#include "description/LoadedDescription.h"
#include "frame/Text.h"
#include "output/ResultFile.h"

namespace tarnexctl {
namespace {

namespace fs = std::filesystem;

// Beside the script, under the name that the library looks for.
std::string NameBeside(const std::string& file) {
    const auto path = compositions::ArchivePathOf(LibraryPath(file));
    if (!path) {
        throw Failure(ExitCode::kInputOutput,
                      "the path of " + InQuotes(file) + " is too long for an archive beside it",
                      "--output names another place; the library does not look there");
    }
    std::error_code ignored;
    if (fs::equivalent(ToPath(ToUtf8(*path)), ToPath(file), ignored)) {
        throw Failure(ExitCode::kUsage, InQuotes(file) + " has the name of its own archive",
                      "--output names another one");
    }
    return ToUtf8(*path);
}

// Other programs' files end in .mxf, too: none of them is lost for an archive.
void RequireArchiveOrNothing(const std::string& name) {
    const fs::path path = ToPath(name);
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (!fs::exists(status)) return;
    if (fs::is_regular_file(status)) {
        char start[compositions::kArchiveSignature.size()] = {};
        std::ifstream(path, std::ios::binary).read(start, sizeof start);
        if (IsArchive({start, sizeof start})) return;
    }
    throw Failure(ExitCode::kInputOutput, InQuotes(name) + " is no archive: it is not replaced");
}

}  // namespace

ExitCode CompileArchive(const std::string& file, const Arguments& arguments, Session& session) {
    std::string output = OutputName(arguments, file);
    const LoadedDescription loaded = LoadDescription(file);
    if (loaded.isArchive) {
        throw Failure(ExitCode::kInputOutput, InQuotes(file) + " is an archive already");
    }
    const bool fine = ReportStatuses(loaded, session);
    const std::int32_t status = loaded.script->GetReadStatus();
    session.Document()["readStatus"] = status;
    if (status != compositions::status::kRead) {
        session.Warn("the library refuses the script: no archive is written");
        return ExitCode::kFindings;
    }
    if (output.empty()) output = NameBeside(file);
    RequireFolderOf(output);
    RequireArchiveOrNothing(output);
    if (!compositions::WriteArchive(LibraryPath(output), loaded.Get())) {
        throw Failure(ExitCode::kInputOutput, InQuotes(output) + " cannot be written");
    }
    const std::uint64_t size = fs::file_size(ToPath(output));
    session.Out() << Printable(ValidUtf8(output)) << ": " << Count(size, "byte", "bytes") << "\n";
    session.Document()["output"] = output;
    session.Document()["bytes"] = size;
    return fine ? ExitCode::kFine : ExitCode::kFindings;
}

}  // namespace tarnexctl
