#include "System.h"

#include <windows.h>

#include <shellapi.h>

#include <string>

namespace host {

namespace {

constexpr int kLongestUnloadMs = 10'000;

HMODULE library = nullptr;

bool WriteLogSetting(const wchar_t* name, DWORD value) {
    return RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Tesmar\\Commons\\Log", name, REG_DWORD,
                           &value, sizeof value) == ERROR_SUCCESS;
}

bool WriteArchiveSetting(const wchar_t* name, const std::wstring& value) {
    return RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Tesmar\\VorelEngine\\Settings\\General",
                           name, REG_SZ, value.c_str(),
                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) ==
           ERROR_SUCCESS;
}

}  // namespace

const char* const kLibraryFile = "tarnex.dll";
const char* const kPluginSuffix = ".dll";

std::filesystem::path ProgramFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path(path).parent_path();
}

std::vector<std::filesystem::path> Arguments(int, char**) {
    // The narrow ones have lost every letter that the code page lacks.
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::filesystem::path> all(arguments + 1, arguments + count);
    LocalFree(arguments);
    return all;
}

void PrepareOutput() {
    SetConsoleOutputCP(CP_UTF8);
}

GetTarnexFunction LoadTarnex(const std::filesystem::path& file) {
    library = LoadLibraryW(file.c_str());
    if (library == nullptr) {
        return nullptr;
    }
    // Through void*, or the compiler warns about the change of signature.
    return reinterpret_cast<GetTarnexFunction>(
        reinterpret_cast<void*>(GetProcAddress(library, "GetTarnex")));
}

void UnloadTarnex() {
    FreeLibrary(library);
    // When its log writer had not even begun yet, it lets go of the library a moment later.
    for (int waited = 0; waited < kLongestUnloadMs && GetModuleHandleA(kLibraryFile);
         waited += 10) {
        Sleep(10);
    }
}

bool EnableTraceLog() {
    return WriteLogSetting(L"Enabled", 1) && WriteLogSetting(L"Level", 0xFFFFFFFF);
}

bool WriteArchives(bool on) {
    const std::wstring value = on ? L"1" : L"0";
    return WriteArchiveSetting(L"Convertor", value) && WriteArchiveSetting(L"Type", value) &&
           WriteArchiveSetting(L"SaveFx", value);
}

}  // namespace host
