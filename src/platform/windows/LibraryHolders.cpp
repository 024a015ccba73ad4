#include "platform/LibraryHolders.h"

#include <windows.h>

#include <tlhelp32.h>

#include <algorithm>
#include <memory>

#include "platform/CodePage.h"

namespace platform {
namespace {

struct HandleCloser {
    void operator()(HANDLE handle) const {
        if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
    }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

bool IsSameFile(const std::wstring& a, const std::wstring& b) {
    return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_EQUAL;
}

std::wstring FullPath(const std::string& path) {
    const std::wstring wide = ToWide(path, CodePage::kUtf8);
    std::wstring full(32768, L'\0');
    full.resize(
        GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

bool FindModule(DWORD process, const std::wstring& path, std::uint64_t& base) {
    const UniqueHandle modules(
        CreateToolhelp32Snapshot(TH32CS_SNAPMODULE | TH32CS_SNAPMODULE32, process));
    if (modules.get() == INVALID_HANDLE_VALUE) return false;
    MODULEENTRY32W module = {};
    module.dwSize = sizeof module;
    for (BOOL more = Module32FirstW(modules.get(), &module); more != 0;
         more = Module32NextW(modules.get(), &module)) {
        if (!IsSameFile(module.szExePath, path)) continue;
        base = reinterpret_cast<std::uintptr_t>(module.modBaseAddr);
        return true;
    }
    return false;
}

}  // namespace

std::vector<LibraryHolder> FindLibraryHolders(const std::string& libraryPath) {
    std::vector<LibraryHolder> holders;
    const std::wstring path = FullPath(libraryPath);
    const UniqueHandle processes(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (processes.get() == INVALID_HANDLE_VALUE) return holders;
    PROCESSENTRY32W process = {};
    process.dwSize = sizeof process;
    for (BOOL more = Process32FirstW(processes.get(), &process); more != 0;
         more = Process32NextW(processes.get(), &process)) {
        LibraryHolder holder;
        holder.process = process.th32ProcessID;
        // Number 0 would mean this process.
        if (holder.process == 0 || holder.process == GetCurrentProcessId()) continue;
        if (!FindModule(process.th32ProcessID, path, holder.base)) continue;
        holder.program = ToNarrow(process.szExeFile, CodePage::kUtf8);
        holders.push_back(std::move(holder));
    }
    std::sort(holders.begin(), holders.end(),
              [](const auto& a, const auto& b) { return a.process < b.process; });
    return holders;
}

bool ReadProcessByte(std::uint32_t process, std::uint64_t address, unsigned char& value) {
    const UniqueHandle handle(OpenProcess(PROCESS_VM_READ, FALSE, process));
    if (handle == nullptr) return false;
    SIZE_T count = 0;
    return ReadProcessMemory(handle.get(),
                             reinterpret_cast<const void*>(static_cast<std::uintptr_t>(address)),
                             &value, 1, &count) != 0 &&
           count == 1;
}

}  // namespace platform
