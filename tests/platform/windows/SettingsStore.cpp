#include "platform/SettingsStore.h"

#include <process.h>
#include <windows.h>

namespace test_platform {

void ResetSettings() {
    for (const wchar_t* key : {L"Software\\Tesmar\\Tests", L"Software\\Tesmar\\Commons\\Log"}) {
        RegDeleteTreeW(HKEY_CURRENT_USER, key);
    }
}

void PutValue(const std::wstring& key, const std::wstring& name, ValueKind kind,
              const Bytes& bytes) {
    HKEY handle = nullptr;
    HKEY parent = HKEY_CURRENT_USER;
    // Piece by piece, so that a path of any length works.
    for (std::size_t begin = 0; begin <= key.size();) {
        const std::size_t end = std::min(key.find(L'\\', begin), key.size());
        RegCreateKeyExW(parent, key.substr(begin, end - begin).c_str(), 0, nullptr, 0,
                        KEY_ALL_ACCESS, nullptr, &handle, nullptr);
        if (parent != HKEY_CURRENT_USER) RegCloseKey(parent);
        parent = handle;
        begin = end + 1;
    }
    const DWORD type = kind == ValueKind::kString   ? REG_SZ
                       : kind == ValueKind::kNumber ? REG_DWORD
                                                    : REG_BINARY;
    RegSetValueExW(handle, name.c_str(), 0, type, bytes.data(), static_cast<DWORD>(bytes.size()));
    RegCloseKey(handle);
}

int RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    std::wstring line = L"\"" + program.wstring() + L"\"";
    for (const std::string& argument : arguments) {
        line += L" \"" + std::wstring(argument.begin(), argument.end()) + L"\"";
    }
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        program.parent_path().c_str(), &start, &process)) {
        return -1;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
}

void UnloadModule(void* module) {
    FreeLibrary(static_cast<HMODULE>(module));
}

void KeepDesktop() {
    GetDesktopWindow();
}

std::string LibraryFileName(const std::string& name) {
    return name + ".dll";
}

}  // namespace test_platform
