#include "compositions/host/ConverterValues.h"

#include <windows.h>

namespace host_test {
namespace {

constexpr wchar_t kKey[] = L"Software\\Tesmar\\VorelEngine\\Settings\\General";

}  // namespace

ScopedConverterValues::ScopedConverterValues(std::filesystem::path) {
    RegDeleteKeyW(HKEY_CURRENT_USER, kKey);
}

ScopedConverterValues::~ScopedConverterValues() {
    RegDeleteKeyW(HKEY_CURRENT_USER, kKey);
}

void ScopedConverterValues::Set(const ConverterValues& values) {
    RegDeleteKeyW(HKEY_CURRENT_USER, kKey);
    for (const auto& [name, value] : values) {
        const std::wstring wideName(name.begin(), name.end());
        const std::wstring wideValue(value.begin(), value.end());
        RegSetKeyValueW(HKEY_CURRENT_USER, kKey, wideName.c_str(), REG_SZ, wideValue.c_str(),
                        static_cast<DWORD>((wideValue.size() + 1) * sizeof(wchar_t)));
    }
}

void ScopedConverterValues::SetBytes(const ConverterValues& values) {
    RegDeleteKeyW(HKEY_CURRENT_USER, kKey);
    for (const auto& [name, value] : values) {
        const std::wstring wideName(name.begin(), name.end());
        RegSetKeyValueW(HKEY_CURRENT_USER, kKey, wideName.c_str(), REG_BINARY, value.data(),
                        static_cast<DWORD>(value.size()));
    }
}

}  // namespace host_test
