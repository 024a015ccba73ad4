#pragma once

// Property values as texts, whatever their form.

#include <cstdint>
#include <string>

#include "base_types/IPropertySet.h"

namespace host {

std::string Text(std::int32_t value);
std::string Text(std::int64_t value);
std::string Text(float value);
std::string Text(bool value);
std::string Text(const std::wstring& value);

// Calls `action` with a value of the type that belongs to the type code; false for a property of
// none of the five forms.
template <typename Action>
bool WithTypedValue(std::int32_t type, Action&& action) {
    switch (type) {
        case base_types::ePropertyInt:
            action(std::int32_t{});
            return true;
        case base_types::ePropertyFloat:
            action(float{});
            return true;
        case base_types::ePropertyBool:
            action(bool{});
            return true;
        case base_types::ePropertyInt64:
            action(std::int64_t{});
            return true;
        case base_types::ePropertyString:
            action(std::wstring{});
            return true;
        default:
            return false;
    }
}

}  // namespace host
