#include "sdk/PropertyEffect.h"

#include "helpers/report/Report.h"

namespace fx {

using base_types::PropertySet;
using helpers::ReportPropertyError;

using PropertyError = base_types::_eError;

PropertyError PropertyEffect::GetProperties(std::vector<std::wstring>& names) {
    return PropertySet::GetProperties(names);
}

PropertyError PropertyEffect::GetPropertyInfo(const std::wstring& name,
                                              base_types::PropertyInfo* info) {
    return PropertySet::GetPropertyInfo(name, info);
}

PropertyError PropertyEffect::GetProperty(const std::wstring& name, void* buffer,
                                          std::int32_t bufferSize, std::int32_t* copied) {
    return PropertySet::GetProperty(name, buffer, bufferSize, copied);
}

PropertyError PropertyEffect::GetProperty(const std::wstring& name, std::wstring& value) {
    return ReportPropertyError(PropertySet::GetProperty(name, value, false),
                               "PropertySet::GetProperty<std::wstring>");
}

PropertyError PropertyEffect::GetProperty(const std::wstring& name, std::int64_t& value) {
    return ReportPropertyError(PropertySet::GetProperty(name, value, false),
                               "PropertySet::GetProperty<__int64>");
}

PropertyError PropertyEffect::GetProperty(const std::wstring& name, bool& value) {
    return ReportPropertyError(PropertySet::GetProperty(name, value, false),
                               "PropertySet::GetProperty<bool>");
}

PropertyError PropertyEffect::GetProperty(const std::wstring& name, float& value) {
    return ReportPropertyError(PropertySet::GetProperty(name, value, false),
                               "PropertySet::GetProperty<float>");
}

PropertyError PropertyEffect::GetProperty(const std::wstring& name, std::int32_t& value) {
    return ReportPropertyError(PropertySet::GetProperty(name, value, false),
                               "PropertySet::GetProperty<int>");
}

PropertyError PropertyEffect::SetProperty(const std::wstring& name, const void* data,
                                          std::int32_t size) {
    return PropertySet::SetProperty(name, data, size);
}

PropertyError PropertyEffect::SetProperty(const std::wstring& name, const std::wstring& value) {
    return ReportPropertyError(PropertySet::SetProperty(name, value, false),
                               "PropertySet::SetProperty<std::wstring>");
}

PropertyError PropertyEffect::SetProperty(const std::wstring& name, std::int64_t value) {
    return ReportPropertyError(PropertySet::SetProperty(name, value, false),
                               "PropertySet::SetProperty<__int64>");
}

PropertyError PropertyEffect::SetProperty(const std::wstring& name, bool value) {
    return ReportPropertyError(PropertySet::SetProperty(name, value, false),
                               "PropertySet::SetProperty<bool>");
}

PropertyError PropertyEffect::SetProperty(const std::wstring& name, float value) {
    return ReportPropertyError(PropertySet::SetProperty(name, value, false),
                               "PropertySet::SetProperty<float>");
}

PropertyError PropertyEffect::SetProperty(const std::wstring& name, std::int32_t value) {
    return ReportPropertyError(PropertySet::SetProperty(name, value, false),
                               "PropertySet::SetProperty<int>");
}

PropertyError PropertyEffect::GetPropertyRange(const std::wstring& name, std::int64_t* min,
                                               std::int64_t* max) {
    return PropertySet::GetPropertyRange(name, min, max);
}

PropertyError PropertyEffect::GetPropertyRange(const std::wstring& name, float* min, float* max) {
    return PropertySet::GetPropertyRange(name, min, max);
}

PropertyError PropertyEffect::GetPropertyRange(const std::wstring& name, std::int32_t* min,
                                               std::int32_t* max) {
    return PropertySet::GetPropertyRange(name, min, max);
}

PropertyError PropertyEffect::GetPropertyDefault(const std::wstring& name, std::wstring* out) {
    return PropertySet::GetPropertyDefault(name, out);
}

PropertyError PropertyEffect::GetPropertyDefault(const std::wstring& name, std::int64_t* out) {
    return PropertySet::GetPropertyDefault(name, out);
}

PropertyError PropertyEffect::GetPropertyDefault(const std::wstring& name, bool* out) {
    return PropertySet::GetPropertyDefault(name, out);
}

PropertyError PropertyEffect::GetPropertyDefault(const std::wstring& name, float* out) {
    return PropertySet::GetPropertyDefault(name, out);
}

PropertyError PropertyEffect::GetPropertyDefault(const std::wstring& name, std::int32_t* out) {
    return PropertySet::GetPropertyDefault(name, out);
}

PropertyError PropertyEffect::CopyPropertiesFrom(
    const std::shared_ptr<base_types::IPropertySet>& source) {
    // A set that is not the library's gives a null pointer, which the set answers.
    return PropertySet::CopyPropertiesFrom(std::dynamic_pointer_cast<PropertySet>(source));
}

bool PropertyEffect::IsValid() {
    return Valid();
}

}  // namespace fx
