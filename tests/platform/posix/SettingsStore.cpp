#include "platform/SettingsStore.h"

#include <dlfcn.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <map>

#include "platform/CodePage.h"

extern char** environ;

namespace test_platform {
namespace {

std::map<std::string, std::map<std::string, std::string>>& Sections() {
    static std::map<std::string, std::map<std::string, std::string>> sections;
    return sections;
}

std::string Utf8(const std::wstring& text) {
    return platform::ToNarrow(text, platform::CodePage::kUtf8);
}

void Save() {
    const std::filesystem::path file = std::filesystem::temp_directory_path() /
                                       ("tarnex_settings_" + std::to_string(getpid()) + ".ini");
    std::ofstream stream(file, std::ios::trunc);
    for (const auto& [section, values] : Sections()) {
        stream << "[" << section << "]\n";
        for (const auto& [name, value] : values) stream << name << "=" << value << "\n";
    }
    setenv("TARNEX_SETTINGS", file.c_str(), 1);
}

}  // namespace

void ResetSettings() {
    Sections().clear();
    Save();
}

void PutValue(const std::wstring& key, const std::wstring& name, ValueKind, const Bytes& bytes) {
    std::string text = "hex:";
    const char* digits = "0123456789abcdef";
    for (const std::uint8_t byte : bytes) {
        if (text.size() > 4) text += ',';
        text += {digits[byte >> 4], digits[byte & 15]};
    }
    Sections()[Utf8(key)][Utf8(name)] = text;
    Save();
}

int RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, argv.data(), environ) != 0) {
        return -1;
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void UnloadModule(void* module) {
    dlclose(module);
}

void KeepDesktop() {}

std::string LibraryFileName(const std::string& name) {
    return "lib" + name + ".so";
}

}  // namespace test_platform
