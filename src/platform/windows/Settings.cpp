#include "platform/Settings.h"

#include <windows.h>

namespace platform {
namespace {

HKEY Native(SettingsKey key) {
    return static_cast<HKEY>(key);
}

}  // namespace

std::wstring SettingsStore() {
    return L"HKEY_CURRENT_USER";
}

SettingsKey CurrentUserSettings() {
    return HKEY_CURRENT_USER;
}

SettingsKey OpenSettingsKey(SettingsKey parent, const std::wstring& path, std::uint32_t access) {
    HKEY key = nullptr;
    const LONG result = RegOpenKeyExW(Native(parent), path.c_str(), 0, access, &key);
    return result == ERROR_SUCCESS ? key : nullptr;
}

SettingsKey CreateSettingsKey(SettingsKey parent, const std::wstring& path, std::uint32_t access) {
    HKEY key = nullptr;
    const LONG result = RegCreateKeyExW(Native(parent), path.c_str(), 0, nullptr, 0, access,
                                        nullptr, &key, nullptr);
    return result == ERROR_SUCCESS ? key : nullptr;
}

void CloseSettingsKey(SettingsKey key) {
    RegCloseKey(Native(key));
}

SettingsResult QuerySettingsValue(SettingsKey key, const std::wstring& name, void* data,
                                  std::uint32_t& size) {
    DWORD bytes = size;
    const LONG result = RegQueryValueExW(Native(key), name.c_str(), nullptr, nullptr,
                                         static_cast<BYTE*>(data), &bytes);
    if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA) return SettingsResult::kFailed;
    size = bytes;
    return result == ERROR_SUCCESS ? SettingsResult::kOk : SettingsResult::kMoreData;
}

bool ReadSettingsNumber(SettingsKey root, const std::wstring& path, const std::wstring& name,
                        std::uint32_t& value) {
    DWORD number = 0;
    DWORD bytes = sizeof number;
    const LONG result = RegGetValueW(Native(root), path.c_str(), name.c_str(), RRF_RT_ANY, nullptr,
                                     &number, &bytes);
    if (result != ERROR_SUCCESS) return false;
    value = number;
    return true;
}

}  // namespace platform
