#include "output/ResultFile.h"

#include <filesystem>
#include <fstream>

#include "compositions/FileReplacement.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "platform/FileMove.h"
#include "platform/NativePath.h"

namespace tarnexctl {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void CannotBeWritten(const std::string& name) {
    throw Failure(ExitCode::kInputOutput, InQuotes(name) + " cannot be written");
}

bool WriteBytes(const fs::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

}  // namespace

OptionSpec OutputOption(const std::string& help) {
    return {"--output", "-o", "FILE", help, ValueKind::kFile};
}

std::string OutputName(const Arguments& arguments, const std::string& input) {
    std::string name = arguments.ValueOr("--output", "");
    std::error_code ignored;
    if (!name.empty() && fs::equivalent(ToPath(name), ToPath(input), ignored)) {
        throw Failure(ExitCode::kUsage, InQuotes(name) + " is what is read: it is not overwritten");
    }
    if (name.empty() && arguments.Has("--output")) {
        throw Failure(ExitCode::kUsage, "--output needs the name of a file");
    }
    return name;
}

void WriteResult(const Arguments& arguments, Session& session, const std::string& input,
                 std::string_view text) {
    const std::string name = OutputName(arguments, input);
    if (name.empty()) {
        session.Out() << text;
        return;
    }
    WriteResultFile(name, text);
    session.Document()["output"] = name;
}

void WriteResultFile(const std::string& name, std::string_view bytes) {
    const fs::path path = ToPath(name);
    RequireFolderOf(name);
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::is_directory(status)) {
        throw Failure(ExitCode::kInputOutput, InQuotes(name) + " is a folder, not a file");
    }
    if (fs::exists(status) && !fs::is_regular_file(status)) {  // a device keeps its place
        if (!WriteBytes(path, bytes)) CannotBeWritten(name);
        return;
    }
    const auto write = [&](const std::wstring& temporary) {
        return WriteBytes(platform::StreamPath(temporary), bytes);
    };
    if (!compositions::ReplaceFile(LibraryPath(name), write)) CannotBeWritten(name);
}

void RequireFolderOf(const std::string& name) {
    const fs::path folder = ToPath(name).parent_path();
    std::error_code ignored;
    if (!folder.empty() && !fs::exists(folder, ignored)) {
        throw Failure(ExitCode::kNotFound, InQuotes(name) + " cannot be written: the folder " +
                                               InQuotes(FromPath(folder)) + " does not exist");
    }
}

std::wstring LibraryPath(const std::string& name) {
    const platform::NativeString native = ToPath(name).native();
    std::wstring path = platform::WidePath(native);
    const bool anyNameIsText = fs::path::preferred_separator == L'\\';
    if (!anyNameIsText && platform::NativePath(path) != native) {
        throw Failure(ExitCode::kInputOutput,
                      "the library cannot name " + InQuotes(name) +
                          ": a backslash separates folders for it, and names are UTF-8");
    }
    return path;
}

}  // namespace tarnexctl
