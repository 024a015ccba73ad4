#include "frame/InputFile.h"

#include "frame/ExitCode.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

namespace fs = std::filesystem;

fs::file_status StatusOf(const fs::path& path, const std::string& name) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        throw Failure(ExitCode::kNotFound, InQuotes(name) + " does not exist");
    }
    if (status.type() == fs::file_type::none) {
        throw Failure(ExitCode::kInputOutput,
                      InQuotes(name) + " cannot be examined: " + FromSystemBytes(error.message()));
    }
    return status;
}

}  // namespace

fs::path ExistingFile(const std::string& name) {
    fs::path path = ToPath(name);
    if (fs::is_directory(StatusOf(path, name))) {
        throw Failure(ExitCode::kInputOutput, InQuotes(name) + " is a folder, not a file");
    }
    return path;
}

fs::path ExistingFolder(const std::string& name) {
    fs::path path = ToPath(name);
    if (!fs::is_directory(StatusOf(path, name))) {
        throw Failure(ExitCode::kInputOutput, InQuotes(name) + " is a file, not a folder");
    }
    return path;
}

std::ifstream OpenInput(const fs::path& path, const std::string& name) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(ExitCode::kInputOutput, InQuotes(name) + " cannot be opened");
    return file;
}

}  // namespace tarnexctl
