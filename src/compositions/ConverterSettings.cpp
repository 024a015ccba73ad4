#include "compositions/ConverterSettings.h"

#include <cstddef>

#include "helpers/regs/RegKey.h"
#include "helpers/regs/RegValue.h"
#include "helpers/regs/StringConverter.h"

namespace compositions {
namespace {

constexpr wchar_t kKeyPath[] = L"Software\\Tesmar\\VorelEngine\\Settings\\General";
constexpr std::size_t kLongestValue = 259;

// A value ends at its first zero.
std::size_t LengthOf(const std::wstring& value) {
    return value.find(L'\0') == std::wstring::npos ? value.size() : value.find(L'\0');
}

bool IsOne(const std::wstring& value) {
    return LengthOf(value) == 1 && value[0] == L'1';
}

std::wstring ReadValue(platform::SettingsKey key, const wchar_t* name) {
    helpers::regs::RegValue<std::wstring, helpers::regs::StringConverter> value(kKeyPath, name);
    return value.Read(key) ? value.Value() : std::wstring();
}

}  // namespace

bool ConverterSettings::AreWithinLimits() const {
    return LengthOf(convertor) <= kLongestValue && LengthOf(type) <= kLongestValue &&
           LengthOf(saveFx) <= kLongestValue;
}

bool ConverterSettings::IsConverting() const {
    return IsOne(convertor) && IsOne(saveFx);
}

bool ConverterSettings::WritesArchives() const {
    return IsConverting() && IsOne(type);
}

ConverterSettings ReadConverterSettings() {
    helpers::regs::HandleStack handles;
    platform::SettingsKey key = nullptr;
    const helpers::regs::RegKey settings(kKeyPath);
    if (!settings.Open(platform::CurrentUserSettings(), false, handles, key)) return {};
    return {ReadValue(key, L"Convertor"), ReadValue(key, L"Type"), ReadValue(key, L"SaveFx")};
}

}  // namespace compositions
