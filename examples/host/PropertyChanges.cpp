#include <algorithm>
#include <cstdio>
#include <vector>

#include "Properties.h"
#include "PropertyText.h"
#include "Text.h"

namespace host {

namespace {

using base_types::IPropertySet;
using base_types::PropertyInfo;

std::int32_t Another(std::int32_t value) {
    return value > 50 ? value / 2 : value + 1;  // stays in most ranges
}
std::int64_t Another(std::int64_t value) {
    return value + 1500;
}
float Another(float value) {
    return value / 2 + 0.25f;
}
bool Another(bool value) {
    return !value;
}
std::wstring Another(const std::wstring& value) {
    return value + L" \u00E0 la carte";
}

template <typename Value>
std::string Read(IPropertySet& properties, const std::wstring& name, Value& value) {
    const base_types::_eError code = properties.GetProperty(name, value);
    return code == base_types::eSuccess ? Text(value) : Name(code);
}

template <typename Value>
void ChangeTyped(IPropertySet& properties, const std::wstring& name, Value value) {
    const std::string before = Read(properties, name, value);
    const Value wanted = Another(value);
    const base_types::_eError code = properties.SetProperty(name, wanted);
    const std::string after = Read(properties, name, value);
    std::printf("  %-14s %s, set to %s: %s, now %s\n", Utf8(name).c_str(), before.c_str(),
                Text(wanted).c_str(), Name(code).c_str(), after.c_str());
}

// A property of none of the typed forms: its bytes, reversed.
void ChangeRaw(IPropertySet& properties, const std::wstring& name, const PropertyInfo& info) {
    // The size is what a plug-in says.
    std::vector<unsigned char> bytes(static_cast<std::size_t>(std::max(info.size, 0)));
    std::int32_t copied = 0;
    const base_types::_eError read = properties.GetProperty(name, bytes.data(), info.size, &copied);
    const std::vector<unsigned char> reversed(bytes.rbegin(), bytes.rend());
    const base_types::_eError written = properties.SetProperty(name, reversed.data(), info.size);
    std::printf("  %-14s %d bytes read: %s, reversed and set: %s\n", Utf8(name).c_str(), copied,
                Name(read).c_str(), Name(written).c_str());
}

}  // namespace

void ChangeProperties(IPropertySet& properties) {
    std::vector<std::wstring> names;
    if (properties.GetProperties(names) != base_types::eSuccess) {
        return;
    }
    for (const std::wstring& name : names) {
        PropertyInfo info{};
        if (properties.GetPropertyInfo(name, &info) != base_types::eSuccess) {
            continue;
        }
        const bool typed =
            WithTypedValue(info.type, [&](auto value) { ChangeTyped(properties, name, value); });
        if (!typed) {
            ChangeRaw(properties, name, info);
        }
    }
}

}  // namespace host
