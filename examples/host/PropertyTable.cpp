#include <cstdio>
#include <vector>

#include "Properties.h"
#include "PropertyText.h"
#include "Text.h"

namespace host {

namespace {

using base_types::IPropertySet;
using base_types::PropertyInfo;

const char* TypeName(std::int32_t type) {
    constexpr const char* kNames[] = {"raw", "int", "float", "bool", "int64", "string"};
    return type >= 0 && type <= base_types::ePropertyString ? kNames[type] : "raw";
}

std::string AccessText(std::uint32_t access) {
    std::string text;
    text += access & base_types::eAccessRead ? "r" : "-";
    text += access & base_types::eAccessWrite ? "w" : "-";
    return text;
}

std::string RangeText(IPropertySet& properties, const std::wstring& name, std::int32_t type) {
    std::string text = "-";
    WithTypedValue(type, [&](auto value) {
        // Flags and texts have no range.
        if constexpr (requires { properties.GetPropertyRange(name, &value, &value); }) {
            auto min = value;
            auto max = value;
            if (properties.GetPropertyRange(name, &min, &max) == base_types::eSuccess) {
                text = Text(min) + " to " + Text(max);
            }
        }
    });
    return text;
}

std::string DefaultText(IPropertySet& properties, const std::wstring& name, std::int32_t type) {
    std::string text = "-";
    WithTypedValue(type, [&](auto value) {
        if (properties.GetPropertyDefault(name, &value) == base_types::eSuccess) {
            text = Text(value);
        }
    });
    return text;
}

std::string ValueText(IPropertySet& properties, const std::wstring& name,
                      const PropertyInfo& info) {
    if ((info.access & base_types::eAccessRead) == 0) {
        return "(write only)";
    }
    std::string text = std::to_string(info.size) + " bytes";
    WithTypedValue(info.type, [&](auto value) {
        const base_types::_eError code = properties.GetProperty(name, value);
        text = code == base_types::eSuccess ? Text(value) : Name(code);
    });
    return text;
}

}  // namespace

void PrintProperties(IPropertySet& properties) {
    std::vector<std::wstring> names;
    const base_types::_eError code = properties.GetProperties(names);
    if (code != base_types::eSuccess) {
        std::printf("  no properties: %s\n", Name(code).c_str());
        return;
    }
    std::printf("  %-14s %-7s %-7s %-24s %-12s value\n", "property", "type", "access", "range",
                "default");
    for (const std::wstring& name : names) {
        PropertyInfo info{};
        if (properties.GetPropertyInfo(name, &info) != base_types::eSuccess) {
            continue;
        }
        std::printf("  %-14s %-7s %-7s %-24s %-12s %s\n", Utf8(name).c_str(), TypeName(info.type),
                    AccessText(info.access).c_str(), RangeText(properties, name, info.type).c_str(),
                    DefaultText(properties, name, info.type).c_str(),
                    ValueText(properties, name, info).c_str());
    }
}

}  // namespace host
