#pragma once

// An effect whose properties live in a property set: the one place where the property operations
// of the interface meet the set. It adds nothing to its three bases, so a class derived from it has
// the layout of one derived from them. Threads: the property operations from any thread; caller
// serialises the rest.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base_types/Validator.h"
#include "fx/IBaseFX.h"
#include "sdk/PropertySet.h"

namespace fx {

// Slots 1 to 17 and 19 to 24 answer as base_types::PropertySet does. A typed get or set that fails
// leaves two lines in the trace log: the set's own, and one that names the typed form. Slot 18 and
// the slots from 25 on are left to the derived class.
class PropertyEffect : public IBaseFX,
                       public base_types::PropertySet,
                       public base_types::Validator {
public:
    using PropertyError = base_types::_eError;

    PropertyError GetProperties(std::vector<std::wstring>& names) override;
    PropertyError GetPropertyInfo(const std::wstring& name,
                                  base_types::PropertyInfo* info) override;

    PropertyError GetProperty(const std::wstring& name, void* buffer, std::int32_t bufferSize,
                              std::int32_t* copied) override;
    PropertyError GetProperty(const std::wstring& name, std::wstring& value) override;
    PropertyError GetProperty(const std::wstring& name, std::int64_t& value) override;
    PropertyError GetProperty(const std::wstring& name, bool& value) override;
    PropertyError GetProperty(const std::wstring& name, float& value) override;
    PropertyError GetProperty(const std::wstring& name, std::int32_t& value) override;

    PropertyError SetProperty(const std::wstring& name, const void* data,
                              std::int32_t size) override;
    PropertyError SetProperty(const std::wstring& name, const std::wstring& value) override;
    PropertyError SetProperty(const std::wstring& name, std::int64_t value) override;
    PropertyError SetProperty(const std::wstring& name, bool value) override;
    PropertyError SetProperty(const std::wstring& name, float value) override;
    PropertyError SetProperty(const std::wstring& name, std::int32_t value) override;

    // A pointer, a string literal for one, would silently become the bool `true`.
    template <class T>
    PropertyError SetProperty(const std::wstring& name, const T* value) = delete;

    PropertyError GetPropertyRange(const std::wstring& name, std::int64_t* min,
                                   std::int64_t* max) override;
    PropertyError GetPropertyRange(const std::wstring& name, float* min, float* max) override;
    PropertyError GetPropertyRange(const std::wstring& name, std::int32_t* min,
                                   std::int32_t* max) override;

    // Slot 18, the raw form, keeps the interface's default body.
    using IBaseFX::GetPropertyDefault;
    PropertyError GetPropertyDefault(const std::wstring& name, std::wstring* out) override;
    PropertyError GetPropertyDefault(const std::wstring& name, std::int64_t* out) override;
    PropertyError GetPropertyDefault(const std::wstring& name, bool* out) override;
    PropertyError GetPropertyDefault(const std::wstring& name, float* out) override;
    PropertyError GetPropertyDefault(const std::wstring& name, std::int32_t* out) override;

    PropertyError CopyPropertiesFrom(
        const std::shared_ptr<base_types::IPropertySet>& source) override;

    // The flag of base_types::Validator.
    bool IsValid() override;

protected:
    PropertyEffect() = default;
};

}  // namespace fx
