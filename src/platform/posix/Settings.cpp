#include "platform/Settings.h"

#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

#include "platform/CodePage.h"
#include "platform/posix/Utf.h"

namespace platform {
namespace {

using Tree = boost::property_tree::ptree;
using Bytes = std::vector<std::uint8_t>;

// An open key: its path below the root, and the file as it was when the key was opened.
struct Key {
    std::string path;
    Tree file;
};

// Built at its first use: settings are read while other static objects are still being built.
Key& Root() {
    static Key root;
    return root;
}

std::filesystem::path SettingsFile() {
    if (const char* file = std::getenv("TARNEX_SETTINGS")) return file;
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder != nullptr && *folder != 0) {
        return std::filesystem::path(folder) / "tarnex.ini";
    }
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home != nullptr ? home : "/") / ".config" / "tarnex.ini";
}

Tree ReadSettingsFile() {
    Tree tree;
    try {
        boost::property_tree::read_ini(SettingsFile().string(), tree);
    } catch (const boost::property_tree::ini_parser_error&) {
        return {};  // an absent or broken file holds no settings
    }
    return tree;
}

// Names of keys and values are the same in either case, as in the registry.
bool SameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

bool IsBelow(std::string_view section, std::string_view path) {
    return section.size() > path.size() && section[path.size()] == '\\' &&
           SameName(section.substr(0, path.size()), path);
}

bool Exists(const Tree& file, std::string_view path) {
    if (path.empty()) return true;
    for (const auto& [section, values] : file) {
        if (SameName(section, path) || IsBelow(section, path)) return true;
    }
    return false;
}

std::string PathBelow(const Key& parent, const std::wstring& path) {
    const std::string name = ToNarrow(path, CodePage::kUtf8);
    if (parent.path.empty() || name.empty()) return parent.path + name;
    return parent.path + "\\" + name;
}

bool AppendSection(const std::string& path) {
    const std::filesystem::path file = SettingsFile();
    std::error_code ignored;  // the opening tells
    std::filesystem::create_directories(file.parent_path(), ignored);
    std::ofstream stream(file, std::ios::app);
    // The unnamed value stands for the key itself: a section without any value would be no section.
    stream << "\n[" << path << "]\n@=\n";
    return static_cast<bool>(stream.flush());
}

Bytes StringValue(std::string_view text) {
    Bytes bytes;
    const auto put = [&bytes](char32_t unit) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    };
    for (std::size_t position = 0; position < text.size();) {
        const char32_t character = NextUtf8(text.data(), text.size(), position);
        if (character < 0x10000) {
            put(character);
        } else {
            put(0xD800 + ((character - 0x10000) >> 10));
            put(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    put(0);
    return bytes;
}

Bytes NumberValue(const std::string& digits) {
    const auto number = static_cast<std::uint32_t>(std::strtoul(digits.c_str(), nullptr, 16));
    Bytes bytes(sizeof number);
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

Bytes BinaryValue(const std::string& list) {
    Bytes bytes;
    const char* next = list.c_str();
    for (char* end = nullptr;; next = end + 1) {
        const unsigned long byte = std::strtoul(next, &end, 16);
        if (end == next) return bytes;
        bytes.push_back(static_cast<std::uint8_t>(byte));
        if (*end != ',') return bytes;
    }
}

// The value as the registry would hold it: "dword:" and "hex:" as in its exported files, all else
// a string, in double quotes when blanks at its ends count.
Bytes ValueBytes(const std::string& text) {
    if (text.starts_with("dword:")) return NumberValue(text.substr(6));
    if (text.starts_with("hex:")) return BinaryValue(text.substr(4));
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return StringValue(quoted ? text.substr(1, text.size() - 2) : text);
}

bool FindValue(const Key& key, const std::wstring& name, Bytes& bytes) {
    const std::string wanted = name.empty() ? "@" : ToNarrow(name, CodePage::kUtf8);
    for (const auto& [section, values] : key.file) {
        if (!SameName(section, key.path)) continue;
        for (const auto& [valueName, value] : values) {
            if (!SameName(valueName, wanted)) continue;
            bytes = ValueBytes(value.data());
            return true;
        }
    }
    return false;
}

}  // namespace

std::wstring SettingsStore() {
    return ToWide(SettingsFile().string(), CodePage::kUtf8);
}

SettingsKey CurrentUserSettings() {
    return &Root();
}

SettingsKey OpenSettingsKey(SettingsKey parent, const std::wstring& path, std::uint32_t) {
    Key key{PathBelow(*static_cast<Key*>(parent), path), ReadSettingsFile()};
    return Exists(key.file, key.path) ? new Key(std::move(key)) : nullptr;
}

SettingsKey CreateSettingsKey(SettingsKey parent, const std::wstring& path, std::uint32_t access) {
    if (SettingsKey existing = OpenSettingsKey(parent, path, access)) return existing;
    const std::string full = PathBelow(*static_cast<Key*>(parent), path);
    return AppendSection(full) ? new Key{full, ReadSettingsFile()} : nullptr;
}

void CloseSettingsKey(SettingsKey key) {
    if (key != &Root()) delete static_cast<Key*>(key);
}

SettingsResult QuerySettingsValue(SettingsKey key, const std::wstring& name, void* data,
                                  std::uint32_t& size) {
    Bytes bytes;
    if (!FindValue(*static_cast<Key*>(key), name, bytes)) return SettingsResult::kFailed;
    const std::uint32_t room = size;
    size = static_cast<std::uint32_t>(bytes.size());
    if (room < size) return SettingsResult::kMoreData;
    if (!bytes.empty()) std::memcpy(data, bytes.data(), bytes.size());
    return SettingsResult::kOk;
}

bool ReadSettingsNumber(SettingsKey root, const std::wstring& path, const std::wstring& name,
                        std::uint32_t& value) {
    const Key key{PathBelow(*static_cast<Key*>(root), path), ReadSettingsFile()};
    Bytes bytes;
    if (!FindValue(key, name, bytes) || bytes.size() > sizeof value) return false;
    std::uint32_t number = 0;
    if (!bytes.empty()) std::memcpy(&number, bytes.data(), bytes.size());
    value = number;
    return true;
}

}  // namespace platform
