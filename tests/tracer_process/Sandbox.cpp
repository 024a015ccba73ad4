#include "tracer_process/Sandbox.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "platform/CodePage.h"
#include "platform/Module.h"
#include "platform/NativePath.h"

namespace trace_test {

namespace fs = std::filesystem;

namespace {

constexpr wchar_t kLogKey[] = L"Software\\Tesmar\\Commons\\Log";

fs::path HostFile() {
    const fs::path self(platform::NativePath(platform::ExecutablePath()));
    return fs::path("trace_host") += self.extension();
}

std::string Utf8(const fs::path& path) {
    return platform::ToNarrow(platform::WidePath(path.native()), platform::CodePage::kUtf8);
}

std::string WithoutFrame(const std::string& line) {
    const std::size_t end = line.find("] ");
    return end == std::string::npos ? line : line.substr(end + 2);
}

}  // namespace

Sandbox::Sandbox(const std::wstring& folder)
    : folder_(temp_.Path() / fs::path(platform::NativePath(folder))) {
    test_platform::KeepDesktop();
    fs::create_directories(folder_);
    const fs::path source = test_platform::ProgramFolder();
    fs::copy_file(source / HostFile(), folder_ / HostFile());
    for (const char* module : {"trace_service", "trace_second", "trace_client"}) {
        const std::string file = test_platform::LibraryFileName(module);
        fs::copy_file(source / file, folder_ / file);
    }
}

platform::ChildResult Sandbox::Run(const std::vector<std::string>& commands) const {
    platform::ChildRequest request;
    request.program = Utf8(folder_ / HostFile());
    request.arguments = commands;
    // Where the compiler's runtime lies.
    const char* path = std::getenv("PATH");
    const std::string own = Utf8(test_platform::ProgramFolder());
    const char separator = fs::path::preferred_separator == '/' ? ':' : ';';
    request.environment = {{"PATH", own + separator + (path != nullptr ? path : "")}};
    request.timeoutMs = 120'000;
    return platform::RunChild(request);
}

std::vector<fs::path> Sandbox::LogFiles() const {
    std::vector<fs::path> files;
    std::error_code ignored;  // no folder, no file
    for (const auto& entry : fs::directory_iterator(LogFolder(), ignored)) {
        files.push_back(entry.path());
    }
    return files;
}

std::string Sandbox::LogBytes() const {
    const std::vector<fs::path> files = LogFiles();
    EXPECT_EQ(files.size(), 1u);
    if (files.size() != 1) return {};
    std::ifstream stream(files[0], std::ios::binary);
    std::stringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

std::vector<std::string> Sandbox::LogLines() const {
    return Lines(LogBytes());
}

std::vector<std::string> Sandbox::LogTexts() const {
    std::vector<std::string> texts;
    const std::vector<std::string> lines = LogLines();
    for (std::size_t i = 1; i < lines.size(); ++i) texts.push_back(WithoutFrame(lines[i]));
    return texts;
}

void PutLogValue(const std::wstring& name, std::uint32_t number) {
    PutLogValue(name, test_platform::ValueKind::kNumber, test_platform::NumberBytes(number));
}

void PutLogValue(const std::wstring& name, test_platform::ValueKind kind,
                 const test_platform::Bytes& bytes) {
    test_platform::PutValue(kLogKey, name, kind, bytes);
}

void EnableLog() {
    test_platform::ResetSettings();
    PutLogValue(L"Enabled", 1);
    PutLogValue(L"Level", 0xFFFFFFFF);
}

std::vector<std::string> Lines(const std::string& bytes) {
    std::vector<std::string> lines;
    std::istringstream stream(bytes);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

}  // namespace trace_test
