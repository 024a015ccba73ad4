#include "support/Library.h"

#include <windows.h>

namespace test_support {

namespace {

constexpr wchar_t kLogKey[] = L"Software\\Tesmar\\Commons\\Log";

void Write(const wchar_t* name, const std::optional<std::uint32_t>& value) {
    if (value) {
        RegSetKeyValueW(HKEY_CURRENT_USER, kLogKey, name, REG_DWORD, &*value, sizeof *value);
    }
}

}  // namespace

const char* const kTarnexFile = "tarnex.dll";

void* OpenLibrary(const std::filesystem::path& path) {
    return LoadLibraryW(path.c_str());
}

void* FindSymbol(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void CloseLibrary(void* library) {
    FreeLibrary(static_cast<HMODULE>(library));
}

ScopedLogSettings::ScopedLogSettings(const LogSettings& settings, const std::filesystem::path&) {
    RegDeleteKeyW(HKEY_CURRENT_USER, kLogKey);
    Write(L"Enabled", settings.enabled);
    Write(L"LogToOutput", settings.logToOutput);
    Write(L"Level", settings.level);
}

ScopedLogSettings::~ScopedLogSettings() {
    RegDeleteKeyW(HKEY_CURRENT_USER, kLogKey);
}

}  // namespace test_support
