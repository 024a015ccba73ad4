// Settings that anybody may have written: values of any bytes against a model of what they mean,
// and where settings are a file, any file.

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "compositions/ConverterSettings.h"
#include "helpers/regs/RegKey.h"
#include "helpers/regs/RegValue.h"
#include "platform/Settings.h"
#include "platform/SettingsStore.h"

using compositions::ConverterSettings;
using helpers::regs::HandleStack;
using helpers::regs::RegKey;

namespace {

using StringValue = helpers::regs::RegValue<std::wstring, helpers::regs::StringConverter>;
using test_platform::Bytes;

constexpr wchar_t kConverterKey[] = L"Software\\Tesmar\\VorelEngine\\Settings\\General";
constexpr std::size_t kLongestValue = 259;

// A value's text: the bytes as 16-bit units without the zeros at the end. Nothing for half a unit,
// and for no text.
std::optional<std::wstring> TextOf(const Bytes& bytes) {
    if (bytes.size() % 2 != 0) return std::nullopt;
    std::u16string units;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        units += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
    }
    while (!units.empty() && units.back() == 0) units.pop_back();
    if (units.empty()) return std::nullopt;
    std::wstring text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char16_t next = i + 1 < units.size() ? units[i + 1] : u'\0';
        const bool isPair =
            units[i] >= 0xD800 && units[i] < 0xDC00 && next >= 0xDC00 && next < 0xE000;
        if (isPair && sizeof(wchar_t) == 4) {
            const auto code = 0x10000u + ((units[i] - 0xD800u) << 10) + (next - 0xDC00u);
            text += static_cast<wchar_t>(code);
            ++i;
        } else {
            text += static_cast<wchar_t>(units[i]);
        }
    }
    return text;
}

std::optional<std::uint32_t> NumberOf(const Bytes& bytes) {
    if (bytes.size() > 4) return std::nullopt;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) number |= std::uint32_t{bytes[i]} << 8 * i;
    return number;
}

// Up to its first zero.
std::wstring Cut(const std::optional<std::wstring>& text) {
    return text ? std::wstring(text->c_str()) : std::wstring();
}

Bytes MakeValue(fuzz::Input& input) {
    const unsigned form = input.Below(4);
    if (form == 0) return test_platform::StringBytes(u"1", input.Below(3));
    if (form == 1) {  // around the longest
        return test_platform::StringBytes(std::u16string(kLongestValue - 2 + input.Below(5), u'x'));
    }
    const std::string_view bytes = input.Bytes(input.Below(64));
    return {bytes.begin(), bytes.end()};
}

void CheckValue(const std::wstring& path, const std::wstring& name, const Bytes& bytes) {
    HandleStack handles;
    platform::SettingsKey key = nullptr;
    fuzz::Check(RegKey(path).Open(platform::CurrentUserSettings(), false, handles, key),
                "a key that is there");
    StringValue value(path, name);
    const std::optional<std::wstring> text = TextOf(bytes);
    fuzz::Check(value.Read(key) == text.has_value(), "whether there is a text");
    fuzz::Check(value.Value() == text.value_or(L""), "a text");

    std::uint32_t number = 77;
    const std::optional<std::uint32_t> expected = NumberOf(bytes);
    fuzz::Check(platform::ReadSettingsNumber(platform::CurrentUserSettings(), path, name, number) ==
                    expected.has_value(),
                "whether there is a number");
    fuzz::Check(number == expected.value_or(77), "a number");
}

void CheckValues(fuzz::Input input) {
    test_platform::ResetSettings();
    std::wstring path = L"Software\\Tesmar\\Tests";
    for (unsigned left = input.Below(8); left > 0; --left) {
        path += L'\\' + std::wstring(1 + input.Below(60), L'k');
    }
    const Bytes bytes = MakeValue(input);
    test_platform::PutValue(path, L"Value", test_platform::ValueKind::kBinary, bytes);
    CheckValue(path, L"Value", bytes);

    // Those that compositions are loaded by.
    std::map<std::wstring, Bytes> values;
    for (const wchar_t* name : {L"Convertor", L"Type", L"SaveFx"}) {
        values[name] = MakeValue(input);
        test_platform::PutValue(kConverterKey, name, test_platform::ValueKind::kBinary,
                                values[name]);
    }
    const ConverterSettings settings = compositions::ReadConverterSettings();
    const std::wstring convertor = Cut(TextOf(values[L"Convertor"]));
    const std::wstring type = Cut(TextOf(values[L"Type"]));
    const std::wstring saveFx = Cut(TextOf(values[L"SaveFx"]));
    const bool isConverting = convertor == L"1" && saveFx == L"1";
    fuzz::Check(settings.IsConverting() == isConverting, "whether it converts");
    fuzz::Check(settings.WritesArchives() == (isConverting && type == L"1"),
                "whether it writes archives");
    fuzz::Check(settings.AreWithinLimits() ==
                    (std::max({convertor.size(), type.size(), saveFx.size()}) <= kLongestValue),
                "whether it is within the limits");
}

// Whatever stands in the file, it is read to the same settings each time.
void CheckFile(std::string_view bytes) {
    test_platform::ResetSettings();
    const char* const path = std::getenv("TARNEX_SETTINGS");
    if (!path) return;  // a registry
    {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    for (const wchar_t* name :
         {L"Software", L"Software\\Tesmar\\Commons\\Log", kConverterKey, L""}) {
        HandleStack handles;
        platform::SettingsKey key = nullptr;
        const RegKey settings(name);
        if (settings.Open(platform::CurrentUserSettings(), false, handles, key)) {
            StringValue first(name, L"Convertor");
            StringValue second(name, L"Convertor");
            fuzz::Check(first.Read(key) == second.Read(key) && first.Value() == second.Value(),
                        "a value differs");
        }
        std::uint32_t number = 0;
        static_cast<void>(platform::ReadSettingsNumber(platform::CurrentUserSettings(), name,
                                                       L"Enabled", number));
    }
    const ConverterSettings once = compositions::ReadConverterSettings();
    const ConverterSettings twice = compositions::ReadConverterSettings();
    fuzz::Check(
        once.convertor == twice.convertor && once.type == twice.type && once.saveFx == twice.saveFx,
        "the settings differ");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && data[0] == 0) {
        CheckValues(fuzz::Input(data + 1, size - 1));
    } else {
        CheckFile({reinterpret_cast<const char*>(data), size});
    }
    return 0;
}
