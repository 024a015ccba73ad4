#include "platform/Module.h"

#include <windows.h>

#include "platform/NativePath.h"

namespace platform {

namespace {

// What is no library, or lacks one that it needs, is a failure and no message box. The calling
// thread alone is concerned.
class ScopedQuiet {
public:
    ScopedQuiet() {
        SetThreadErrorMode(GetThreadErrorMode() | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX,
                           &before_);
    }
    ~ScopedQuiet() {
        const DWORD error = GetLastError();  // the loader's, for whoever asks why
        SetThreadErrorMode(before_, nullptr);
        SetLastError(error);
    }
    ScopedQuiet(const ScopedQuiet&) = delete;
    ScopedQuiet& operator=(const ScopedQuiet&) = delete;

private:
    DWORD before_ = 0;
};

}  // namespace

void* LoadModule(const std::wstring& path) {
    const ScopedQuiet quiet;
    return LoadLibraryExW(NativePath(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

void* ResolveSymbol(void* module, const std::string& name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name.c_str()));
}

std::wstring ExecutablePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);  // it was cut
    }
}

}  // namespace platform
