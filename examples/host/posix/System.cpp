#include "System.h"

#include <dlfcn.h>

#include <cstdlib>
#include <fstream>

namespace host {

namespace {

void* library = nullptr;

}  // namespace

const char* const kLibraryFile = "libtarnex.so";
const char* const kPluginSuffix = ".so";

std::filesystem::path ProgramFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
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
    const std::filesystem::path file = ProgramFolder() / "host_settings.ini";
    std::ofstream settings(file);
    settings << "[Software\\Tesmar\\Commons\\Log]\nEnabled=dword:1\nLevel=dword:ffffffff\n";
    settings.close();
    return settings.good() && setenv("TARNEX_SETTINGS", file.c_str(), 1) == 0;
}

}  // namespace host
