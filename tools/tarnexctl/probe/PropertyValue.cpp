#include "probe/PropertyValue.h"

#include <bit>
#include <cmath>
#include <type_traits>
#include <vector>

#include "frame/Text.h"

namespace tarnexctl {
namespace {

using base_types::_eError;

struct AccessBit {
    std::uint32_t bit;
    const char* word;
};
constexpr AccessBit kAccessBits[] = {{base_types::eAccessRead, "read"},
                                     {base_types::eAccessWrite, "write"},
                                     {base_types::eAccessExpensive, "expensive"},
                                     {base_types::eAccessEnveloped, "enveloped"},
                                     {base_types::eAccessNoInterpolation, "no-interpolation"}};

template <typename T>
constexpr bool kHasRange =
    std::is_same_v<T, std::int32_t> || std::is_same_v<T, float> || std::is_same_v<T, std::int64_t>;

Json DescribeProperty(base_types::IPropertySet& set, const std::wstring& name) {
    Json document;
    document["name"] = ToUtf8(name);
    base_types::PropertyInfo info = {};
    if (set.GetPropertyInfo(name, &info) != base_types::eSuccess) return document;
    document["type"] = TypeName(info.type);
    document["typeCode"] = info.type;
    document["access"] = AccessWords(info.access);
    document["size"] = info.size;
    const std::optional<PropertyValue> form = EmptyValueOf(info.type);
    if (!form) return document;
    if (const auto range = GetRange(set, name, *form)) {
        document["min"] = ValueDocument(range->first);
        document["max"] = ValueDocument(range->second);
    }
    PropertyValue value = *form;
    if (GetDefault(set, name, value) == base_types::eSuccess) {
        document["default"] = ValueDocument(value);
    }
    value = *form;
    const bool readable = (info.access & base_types::eAccessRead) != 0;
    if (readable && GetValue(set, name, value) == base_types::eSuccess) {
        document["value"] = ValueDocument(value);
    }
    return document;
}

}  // namespace

std::optional<PropertyValue> EmptyValueOf(std::int32_t type) {
    switch (type) {
        case base_types::ePropertyInt:
            return std::int32_t{0};
        case base_types::ePropertyFloat:
            return 0.0f;
        case base_types::ePropertyBool:
            return false;
        case base_types::ePropertyInt64:
            return std::int64_t{0};
        case base_types::ePropertyString:
            return std::wstring();
        default:
            return std::nullopt;
    }
}

_eError GetValue(base_types::IPropertySet& set, const std::wstring& name, PropertyValue& value) {
    return std::visit([&](auto& form) { return set.GetProperty(name, form); }, value);
}

_eError SetValue(base_types::IPropertySet& set, const std::wstring& name,
                 const PropertyValue& value) {
    return std::visit([&](const auto& form) { return set.SetProperty(name, form); }, value);
}

_eError GetDefault(base_types::IPropertySet& set, const std::wstring& name, PropertyValue& value) {
    return std::visit([&](auto& form) { return set.GetPropertyDefault(name, &form); }, value);
}

std::optional<std::pair<PropertyValue, PropertyValue>> GetRange(base_types::IPropertySet& set,
                                                                const std::wstring& name,
                                                                const PropertyValue& form) {
    std::optional<std::pair<PropertyValue, PropertyValue>> range;
    std::visit(
        [&](const auto& typed) {
            using Form = std::decay_t<decltype(typed)>;
            if constexpr (kHasRange<Form>) {
                Form min{};
                Form max{};
                if (set.GetPropertyRange(name, &min, &max) == base_types::eSuccess) {
                    range = {min, max};
                }
            }
        },
        form);
    return range;
}

bool IsBelow(const PropertyValue& a, const PropertyValue& b) {
    if (a.index() != b.index()) return false;
    return std::visit(
        [&](const auto& left) {
            using Form = std::decay_t<decltype(left)>;
            if constexpr (kHasRange<Form>) return left < std::get<Form>(b);
            return false;
        },
        a);
}

bool IsSame(const PropertyValue& a, const PropertyValue& b) {
    if (const float* left = std::get_if<float>(&a); left != nullptr) {
        const float* right = std::get_if<float>(&b);
        return right != nullptr &&
               std::bit_cast<std::uint32_t>(*left) == std::bit_cast<std::uint32_t>(*right);
    }
    return a == b;
}

const char* TypeName(std::int32_t type) {
    switch (type) {
        case base_types::ePropertyInt:
            return "int";
        case base_types::ePropertyFloat:
            return "float";
        case base_types::ePropertyBool:
            return "bool";
        case base_types::ePropertyInt64:
            return "int64";
        case base_types::ePropertyString:
            return "string";
        default:
            return "raw";
    }
}

std::string AccessWords(std::uint32_t access) {
    std::string words;
    for (const AccessBit& known : kAccessBits) {
        if ((access & known.bit) == 0) continue;
        words += (words.empty() ? "" : " ") + std::string(known.word);
        access &= ~known.bit;
    }
    if (access != 0) words += (words.empty() ? "" : " ") + std::to_string(access);
    return words.empty() ? "none" : words;
}

Json ValueDocument(const PropertyValue& value) {
    if (const auto* text = std::get_if<std::wstring>(&value)) return ToUtf8(*text);
    if (const float* number = std::get_if<float>(&value)) {
        // JSON has no word for these.
        if (std::isnan(*number)) return "nan";
        if (std::isinf(*number)) return *number > 0 ? "inf" : "-inf";
        return *number;
    }
    return std::visit(
        [](const auto& form) -> Json {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(form)>>) return form;
            return nullptr;
        },
        value);
}

Json DescribeProperties(base_types::IPropertySet& set) {
    Json properties = Json::array();
    std::vector<std::wstring> names;
    if (set.GetProperties(names) != base_types::eSuccess) return properties;
    for (const std::wstring& name : names) properties.push_back(DescribeProperty(set, name));
    return properties;
}

}  // namespace tarnexctl
