#pragma once

// The typed properties of an effect, as hosts and plug-ins see them across a binary interface: the
// slot order below is fixed. Names compare exactly (case counts). Unless an operation says
// otherwise, nothing is changed when it fails. Threads: as the implementing class says; the
// library's own property set may be used from any thread.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base_types/Errors.h"
#include "base_types/PropertyInfo.h"

namespace base_types {

class IPropertySet {
public:
    /* 0 */ virtual ~IPropertySet() = default;

    // Clears `names` and fills it with the name of every property.
    /* 1 */ virtual _eError GetProperties(std::vector<std::wstring>& names) = 0;

    // Copies the property's record into `*info`. No access right is needed.
    // ePropertyNotFound; ePointerCastFailure for a null `info`.
    /* 2 */ virtual _eError GetPropertyInfo(const std::wstring& name, PropertyInfo* info) = 0;

    // GetProperty copies the value out. SetProperty copies a value in. The raw forms move at most
    // PropertyInfo::size bytes of a property that is not a string, and GetProperty stores the
    // number of bytes in `*copied`.
    // ePropertyNotFound, ePropertyNoAccessForReading, ePropertyNoAccessForWriting,
    // ePointerCastFailure for another form than the property's own or a null pointer.
    //
    // A string is set from an std::wstring: a literal would be taken for a bool, see below.
    //
    // GetPropertyRange and GetPropertyDefault need no access right. ePropertyMinMaxNotSpecified or
    // ePropertyDefaultValNotSpecified when the property has none.
    //
    // One compiler lays overloads of a name out in reverse order of declaration, the other in order
    // of declaration: the two lists below give the same slots.
#ifdef _MSC_VER
    /* 8 */ virtual _eError GetProperty(const std::wstring& name, std::int32_t& value) = 0;
    /* 7 */ virtual _eError GetProperty(const std::wstring& name, float& value) = 0;
    /* 6 */ virtual _eError GetProperty(const std::wstring& name, bool& value) = 0;
    /* 5 */ virtual _eError GetProperty(const std::wstring& name, std::int64_t& value) = 0;
    /* 4 */ virtual _eError GetProperty(const std::wstring& name, std::wstring& value) = 0;
    /* 3 */ virtual _eError GetProperty(const std::wstring& name, void* buffer,
                                        std::int32_t bufferSize, std::int32_t* copied) = 0;
    /* 14 */ virtual _eError SetProperty(const std::wstring& name, std::int32_t value) = 0;
    /* 13 */ virtual _eError SetProperty(const std::wstring& name, float value) = 0;
    /* 12 */ virtual _eError SetProperty(const std::wstring& name, bool value) = 0;
    /* 11 */ virtual _eError SetProperty(const std::wstring& name, std::int64_t value) = 0;
    /* 10 */ virtual _eError SetProperty(const std::wstring& name, const std::wstring& value) = 0;
    /* 9 */ virtual _eError SetProperty(const std::wstring& name, const void* data,
                                        std::int32_t size) = 0;
    /* 17 */ virtual _eError GetPropertyRange(const std::wstring& name, std::int32_t* min,
                                              std::int32_t* max) = 0;
    /* 16 */ virtual _eError GetPropertyRange(const std::wstring& name, float* min, float* max) = 0;
    /* 15 */ virtual _eError GetPropertyRange(const std::wstring& name, std::int64_t* min,
                                              std::int64_t* max) = 0;
    /* 23 */ virtual _eError GetPropertyDefault(const std::wstring&, std::int32_t*) {
        return eNotImplemented;
    }
    /* 22 */ virtual _eError GetPropertyDefault(const std::wstring&, float*) {
        return eNotImplemented;
    }
    /* 21 */ virtual _eError GetPropertyDefault(const std::wstring&, bool*) {
        return eNotImplemented;
    }
    /* 20 */ virtual _eError GetPropertyDefault(const std::wstring&, std::int64_t*) {
        return eNotImplemented;
    }
    /* 19 */ virtual _eError GetPropertyDefault(const std::wstring&, std::wstring*) {
        return eNotImplemented;
    }
    /* 18 */ virtual _eError GetPropertyDefault(const std::wstring&, void*) {
        return eNotImplemented;
    }
#else
    /* 3 */ virtual _eError GetProperty(const std::wstring& name, void* buffer,
                                        std::int32_t bufferSize, std::int32_t* copied) = 0;
    /* 4 */ virtual _eError GetProperty(const std::wstring& name, std::wstring& value) = 0;
    /* 5 */ virtual _eError GetProperty(const std::wstring& name, std::int64_t& value) = 0;
    /* 6 */ virtual _eError GetProperty(const std::wstring& name, bool& value) = 0;
    /* 7 */ virtual _eError GetProperty(const std::wstring& name, float& value) = 0;
    /* 8 */ virtual _eError GetProperty(const std::wstring& name, std::int32_t& value) = 0;
    /* 9 */ virtual _eError SetProperty(const std::wstring& name, const void* data,
                                        std::int32_t size) = 0;
    /* 10 */ virtual _eError SetProperty(const std::wstring& name, const std::wstring& value) = 0;
    /* 11 */ virtual _eError SetProperty(const std::wstring& name, std::int64_t value) = 0;
    /* 12 */ virtual _eError SetProperty(const std::wstring& name, bool value) = 0;
    /* 13 */ virtual _eError SetProperty(const std::wstring& name, float value) = 0;
    /* 14 */ virtual _eError SetProperty(const std::wstring& name, std::int32_t value) = 0;
    /* 15 */ virtual _eError GetPropertyRange(const std::wstring& name, std::int64_t* min,
                                              std::int64_t* max) = 0;
    /* 16 */ virtual _eError GetPropertyRange(const std::wstring& name, float* min, float* max) = 0;
    /* 17 */ virtual _eError GetPropertyRange(const std::wstring& name, std::int32_t* min,
                                              std::int32_t* max) = 0;
    /* 18 */ virtual _eError GetPropertyDefault(const std::wstring&, void*) {
        return eNotImplemented;
    }
    /* 19 */ virtual _eError GetPropertyDefault(const std::wstring&, std::wstring*) {
        return eNotImplemented;
    }
    /* 20 */ virtual _eError GetPropertyDefault(const std::wstring&, std::int64_t*) {
        return eNotImplemented;
    }
    /* 21 */ virtual _eError GetPropertyDefault(const std::wstring&, bool*) {
        return eNotImplemented;
    }
    /* 22 */ virtual _eError GetPropertyDefault(const std::wstring&, float*) {
        return eNotImplemented;
    }
    /* 23 */ virtual _eError GetPropertyDefault(const std::wstring&, std::int32_t*) {
        return eNotImplemented;
    }
#endif

    // No slot. A pointer, a string literal for one, would silently become the bool `true`.
    template <class T>
    _eError SetProperty(const std::wstring& name, const T* value) = delete;

    // Copies every value of `source`, property by property in name order, into this set; both are
    // expected to hold the same names. The caller keeps `source` from changing meanwhile.
    // eNotImplemented when `source` is not built on the library's property set.
    /* 24 */ virtual _eError CopyPropertiesFrom(const std::shared_ptr<IPropertySet>&) {
        return eNotImplemented;
    }
};

}  // namespace base_types
