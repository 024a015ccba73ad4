#pragma once

// The store of an effect's named properties. An effect inherits it and forwards the property
// operations of its interface to it; fx::PropertyEffect does that once for all.
//
// Threads: the get, set, info, range, default and copy operations and GetProperties may be called
// from any thread at any time; one lock in the set serialises them. AddProperty and Clear take the
// lock too, so that properties may be added while other threads read, but an effect's set is
// normally filled in its constructor.
//
// Failures: nothing is changed by a failed call. Nothing is thrown, but by AddProperty. "Reported"
// is a line in the trace log, written after the lock has been released.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base_types/Errors.h"
#include "base_types/PropertyInfo.h"
#include "sdk/Property.h"

namespace base_types {

class PropertySet {
public:
    PropertySet();
    PropertySet(const PropertySet&) = delete;
    PropertySet& operator=(const PropertySet&) = delete;

    // Copies min(`size`, the property's size) bytes into the value; none for a negative size.
    // ePropertyNotFound, ePropertyNoAccessForWriting; ePointerCastFailure for a null `data`, a
    // string property or an entry without a property object. All reported.
    /* 0 */ virtual _eError SetProperty(const std::wstring& name, const void* data,
                                        std::int32_t size);

    // Deletes every property.
    /* 1 */ virtual ~PropertySet();

    // Adds a property, which the set owns from now on; no name is refused. Of properties with the
    // same name the one added first is found. Costs an append: order is made by the next lookup.
    // Throws std::bad_alloc, nothing added.
    void AddProperty(std::wstring name, std::unique_ptr<Property> property);

    // Deletes every property.
    void Clear();

    // Fills `names` in the order in which the entries stand: those that a lookup has sorted, then
    // those added since, as they were added. eGenericException, reported, when memory runs out.
    _eError GetProperties(std::vector<std::wstring>& names);

    // Asks for no access right. ePropertyNotFound; ePointerCastFailure for a null `info`.
    _eError GetPropertyInfo(const std::wstring& name, PropertyInfo* info);

    // Copies min(`bufferSize`, the property's size) bytes out, none for a negative size, and
    // stores their number in `*copied`. ePropertyNotFound, ePropertyNoAccessForReading;
    // ePointerCastFailure for a null pointer, a string property or an entry without a property
    // object. All reported.
    _eError GetProperty(const std::wstring& name, void* buffer, std::int32_t bufferSize,
                        std::int32_t* copied);

    // Typed forms. `force` passes over the access right. ePropertyNotFound,
    // ePropertyNoAccessForReading, ePropertyNoAccessForWriting; ePointerCastFailure for another
    // form than the property's own. All reported.
    _eError GetProperty(const std::wstring& name, std::int32_t& value, bool force = false);
    _eError GetProperty(const std::wstring& name, float& value, bool force = false);
    _eError GetProperty(const std::wstring& name, bool& value, bool force = false);
    _eError GetProperty(const std::wstring& name, std::int64_t& value, bool force = false);
    _eError GetProperty(const std::wstring& name, std::wstring& value, bool force = false);
    _eError SetProperty(const std::wstring& name, const std::int32_t& value, bool force = false);
    _eError SetProperty(const std::wstring& name, const float& value, bool force = false);
    _eError SetProperty(const std::wstring& name, const bool& value, bool force = false);
    _eError SetProperty(const std::wstring& name, const std::int64_t& value, bool force = false);
    _eError SetProperty(const std::wstring& name, const std::wstring& value, bool force = false);

    // A pointer, a string literal for one, would silently become the bool `true`.
    template <class T>
    _eError SetProperty(const std::wstring& name, const T* value) = delete;

    // Range and default ask for no access right and report nothing. ePropertyNotFound,
    // ePropertyMinMaxNotSpecified, ePropertyDefaultValNotSpecified; ePointerCastFailure for another
    // form than the property's own or a null pointer.
    _eError GetPropertyRange(const std::wstring& name, std::int64_t* min, std::int64_t* max);
    _eError GetPropertyRange(const std::wstring& name, float* min, float* max);
    _eError GetPropertyRange(const std::wstring& name, std::int32_t* min, std::int32_t* max);
    _eError GetPropertyDefault(const std::wstring& name, std::wstring* out);
    _eError GetPropertyDefault(const std::wstring& name, std::int64_t* out);
    _eError GetPropertyDefault(const std::wstring& name, bool* out);
    _eError GetPropertyDefault(const std::wstring& name, float* out);
    _eError GetPropertyDefault(const std::wstring& name, std::int32_t* out);

    // Assigns the values of `source` to the properties of this set, side by side in name order as
    // far as both sets reach; a pair of different types is passed over. Names are not compared:
    // both sets are expected to hold the same. `source` is put into name order but not locked: the
    // caller keeps it from being used meanwhile. eNotImplemented for a null `source`. Reports
    // nothing. A property that throws ends the copy with its code, and what was assigned before it
    // gets its old value again.
    _eError CopyPropertiesFrom(const std::shared_ptr<PropertySet>& source);

private:
    using Entry = std::pair<std::wstring, std::unique_ptr<Property>>;
    using Entries = std::vector<Entry>;
    class Lock;
    struct Layout;

    void Sort();
    Entries::iterator Find(const std::wstring& name);
    Entries::iterator Search(const std::wstring& name);
    void CopyPairs(Entries& source);
    template <class Body>
    _eError Reported(const char* operation, const std::wstring& name, Body body);
    template <class Body>
    _eError Unreported(Body body);
    template <class T>
    _eError Get(const std::wstring& name, T& value, bool force);
    template <class T>
    _eError Set(const std::wstring& name, const T& value, bool force);
    template <class T>
    _eError Range(const std::wstring& name, T* min, T* max);
    template <class T>
    _eError Default(const std::wstring& name, T* out);

    alignas(8) unsigned char criticalSection_[40];
    Entries entries_;
    Entries::iterator lastHit_;  // the entry found last; the end when there is none
    std::uint32_t sortedCount_;  // entries at the front that stand in name order

    // Behind what sets of other modules are known by, and never touched in a set that is a source.
    std::vector<std::uint32_t> places_;  // where names were found
};

}  // namespace base_types
