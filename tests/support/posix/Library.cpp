#include "support/Library.h"

#include <dlfcn.h>

#include <fstream>

namespace test_support {

const char* const kTarnexFile = "libtarnex.so";

void* OpenLibrary(const std::filesystem::path& path) {
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* FindSymbol(void* library, const char* name) {
    return dlsym(library, name);
}

void CloseLibrary(void* library) {
    dlclose(library);
}

ScopedLogSettings::ScopedLogSettings(const LogSettings& settings,
                                     const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / "settings.ini";
    std::ofstream stream(file);
    stream << "[Software\\Tesmar\\Commons\\Log]\n" << std::hex;
    const auto write = [&stream](const char* name, const std::optional<std::uint32_t>& value) {
        if (value) {
            stream << name << "=dword:" << *value << "\n";
        }
    };
    write("Enabled", settings.enabled);
    write("LogToOutput", settings.logToOutput);
    write("Level", settings.level);
    environment_["TARNEX_SETTINGS"] = file.string();
}

ScopedLogSettings::~ScopedLogSettings() = default;

}  // namespace test_support
