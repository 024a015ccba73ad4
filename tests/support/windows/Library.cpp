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
    std::wstring file(32768, L'\0');
    file.resize(GetModuleFileNameW(static_cast<HMODULE>(library), file.data(), 32768));
    FreeLibrary(static_cast<HMODULE>(library));
    // A library whose thread has not begun yet leaves a moment later.
    for (int i = 0; i < 20'000 && GetModuleHandleW(file.c_str()) != nullptr; ++i) Sleep(1);
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
