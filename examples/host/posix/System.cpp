#include "System.h"

#include <dlfcn.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace host {

namespace {

void* library = nullptr;
std::string logSettings;
std::string archiveSettings;

// The library reads the file that the environment names, anew each time it asks for a setting.
bool WriteSettings() {
    const std::filesystem::path file = ProgramFolder() / "host_settings.ini";
    std::ofstream settings(file);
    settings << logSettings << archiveSettings;
    settings.close();
    return settings.good() && setenv("TARNEX_SETTINGS", file.c_str(), 1) == 0;
}

}  // namespace

const char* const kLibraryFile = "libtarnex.so";
const char* const kPluginSuffix = ".so";

std::filesystem::path ProgramFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

std::vector<std::filesystem::path> Arguments(int count, char** arguments) {
    return {arguments + 1, arguments + count};
}

void PrepareOutput() {}

GetTarnexFunction LoadTarnex(const std::filesystem::path& file) {
    library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        return nullptr;
    }
    return reinterpret_cast<GetTarnexFunction>(dlsym(library, "GetTarnex"));
}

void UnloadTarnex() {
    dlclose(library);
}

bool EnableTraceLog() {
    logSettings = "[Software\\Tesmar\\Commons\\Log]\nEnabled=dword:1\nLevel=dword:ffffffff\n";
    return WriteSettings();
}

bool WriteArchives(bool on) {
    archiveSettings =
        on ? "[Software\\Tesmar\\VorelEngine\\Settings\\General]\nConvertor=1\nType=1\nSaveFx=1\n"
           : "";
    return WriteSettings();
}

}  // namespace host
