#pragma once

// One property's value in whichever of the five forms it has.

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "base_types/IPropertySet.h"
#include "frame/Json.h"

namespace tarnexctl {

using PropertyValue = std::variant<std::int32_t, float, bool, std::int64_t, std::wstring>;

// The forms by type code 1 to 5, each with an empty value; none for any other code.
std::optional<PropertyValue> EmptyValueOf(std::int32_t type);

// Each goes through the slot of the value's own form. Exceptions of the effect pass on.
base_types::_eError GetValue(base_types::IPropertySet& set, const std::wstring& name,
                             PropertyValue& value);
base_types::_eError SetValue(base_types::IPropertySet& set, const std::wstring& name,
                             const PropertyValue& value);
base_types::_eError GetDefault(base_types::IPropertySet& set, const std::wstring& name,
                               PropertyValue& value);

// The range of a number; none when the form has no ranges or the property has none.
std::optional<std::pair<PropertyValue, PropertyValue>> GetRange(base_types::IPropertySet& set,
                                                                const std::wstring& name,
                                                                const PropertyValue& form);

// Numbers of one form compared; false for other forms.
bool IsBelow(const PropertyValue& a, const PropertyValue& b);

// Equal to the bit, so that a float that is no number equals itself.
bool IsSame(const PropertyValue& a, const PropertyValue& b);

const char* TypeName(std::int32_t type);
std::string AccessWords(std::uint32_t access);
Json ValueDocument(const PropertyValue& value);

// Everything that an effect says of its properties: name, type, access, size, range, default and
// value, each only where there is one. Exceptions of the effect pass on.
Json DescribeProperties(base_types::IPropertySet& set);

}  // namespace tarnexctl
