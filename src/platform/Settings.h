#pragma once

// The store of settings: the registry, or where there is none a plain INI file. Handles are owned
// by the caller and closed with CloseSettingsKey. Any thread.
//
// The INI file is $TARNEX_SETTINGS, else tarnex.ini under $XDG_CONFIG_HOME or ~/.config. A section
// is a key, named with its whole path; a value is `name=text`, `name="text"` (verbatim between the
// quotes), `name=dword:1f` or `name=hex:61,00`, both in hexadecimal. Names are alike in either
// case. The file is read anew at each opening.

#include <cstdint>
#include <string>

namespace platform {

using SettingsKey = void*;

enum class SettingsResult { kOk, kMoreData, kFailed };

// The root of the current user's settings; never closed.
SettingsKey CurrentUserSettings();

// What people call the store: the registry's root, or the file's path.
std::wstring SettingsStore();

// Null on failure. `access` bits are those of the system's registry.
SettingsKey OpenSettingsKey(SettingsKey parent, const std::wstring& path, std::uint32_t access);
SettingsKey CreateSettingsKey(SettingsKey parent, const std::wstring& path, std::uint32_t access);
void CloseSettingsKey(SettingsKey key);

// Copies the value's bytes (UTF-16 for strings) into `data`; `size` goes in as the room there and
// comes out as the value's size. kMoreData when the room is too small.
SettingsResult QuerySettingsValue(SettingsKey key, const std::wstring& name, void* data,
                                  std::uint32_t& size);

// Reads a value of any type that fits in 4 bytes; false otherwise.
bool ReadSettingsNumber(SettingsKey root, const std::wstring& path, const std::wstring& name,
                        std::uint32_t& value);

}  // namespace platform
