#include "platform/NativePath.h"

#include <windows.h>

namespace platform {

NativeString NativePath(const std::wstring& path) {
    constexpr std::size_t kLimit = 248;  // folders must leave room for a short file name
    if (path.size() < kLimit || path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\")) {
        return path;
    }
    std::wstring full(path.size() + MAX_PATH, L'\0');
    const DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0 || length >= full.size()) return path;
    full.resize(length);
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + full.substr(2);
    return L"\\\\?\\" + full;
}

std::wstring WidePath(const NativeString& path) {
    return path;
}

}  // namespace platform
