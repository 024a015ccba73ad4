// The property set's operations that move values.

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "base_types/PropertySetLock.h"
#include "sdk/PropertySet.h"

namespace base_types {
namespace {

constexpr char kGetProperty[] = "base_types::PropertySet::GetProperty";
constexpr char kSetProperty[] = "base_types::PropertySet::SetProperty";

// How an operation ended, and whether its report names the property.
struct Outcome {
    _eError code;
    bool named;
};

constexpr Outcome kDone{eSuccess, false};
constexpr Outcome kNotFound{ePropertyNotFound, true};
constexpr Outcome kNotReadable{ePropertyNoAccessForReading, true};
constexpr Outcome kNotWritable{ePropertyNoAccessForWriting, true};
constexpr Outcome kCastFailure{ePointerCastFailure, false};

bool Readable(const Property& property) {
    return (property.Info().access & eAccessRead) != 0;
}

bool Writable(const Property& property) {
    return (property.Info().access & eAccessWrite) != 0;
}

// A property whose value the raw operations may move: bytes of a string object are never touched.
bool IsRawCapable(const Property* property) {
    return property && property->Info().type != ePropertyString;
}

template <class T>
bool IsOfForm(const Property* property) {
    return property && property->Info().type == kTypeOf<T>;
}

template <class T>
void CopyOut(const void* storage, T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        // A raw set may have left any byte there.
        value = *static_cast<const unsigned char*>(storage) != 0;
    } else if (storage != &value) {
        value = *static_cast<const T*>(storage);
    }
}

std::size_t BytesToMove(const Property& property, std::int32_t size) {
    return static_cast<std::size_t>(std::max(0, std::min(property.Info().size, size)));
}

// A property of no bytes needs no storage.
bool IsStorageOf(const Property& property, const void* storage) {
    return storage || property.Info().size <= 0;
}

void Move(const void* from, void* to, std::size_t count) {
    if (count != 0) {
        std::memmove(to, from, count);
    }
}

}  // namespace

template <class Body>
_eError PropertySet::Reported(const char* operation, const std::wstring& name, Body body) {
    Outcome outcome = kDone;
    try {
        Lock lock(*this);
        outcome = body();
    } catch (const Exception& exception) {
        outcome = {exception.code, false};
    } catch (...) {
        outcome = {eNonInterfaceException, false};
    }
    return outcome.named ? helpers::ReportPropertyError(outcome.code, operation, name)
                         : helpers::ReportPropertyError(outcome.code, operation);
}

template <class Body>
_eError PropertySet::Unreported(Body body) {
    try {
        Lock lock(*this);
        return body();
    } catch (const Exception& exception) {
        return exception.code;
    } catch (...) {
        return eNonInterfaceException;
    }
}

_eError PropertySet::GetProperty(const std::wstring& name, void* buffer, std::int32_t bufferSize,
                                 std::int32_t* copied) {
    return Reported(kGetProperty, name, [&] {
        const auto hit = Find(name);
        if (hit == entries_.end()) {
            return kNotFound;
        }
        Property* property = hit->second.get();
        if (!IsRawCapable(property) || !buffer || !copied) {
            return kCastFailure;
        }
        if (!Readable(*property)) {
            return kNotReadable;
        }
        const void* storage = property->Value();
        if (!IsStorageOf(*property, storage)) {
            return kCastFailure;
        }
        const std::size_t count = BytesToMove(*property, bufferSize);
        *copied = static_cast<std::int32_t>(count);
        Move(storage, buffer, count);
        return kDone;
    });
}

_eError PropertySet::SetProperty(const std::wstring& name, const void* data, std::int32_t size) {
    return Reported(kSetProperty, name, [&] {
        const auto hit = Find(name);
        if (hit == entries_.end()) {
            return kNotFound;
        }
        Property* property = hit->second.get();
        if (!IsRawCapable(property) || !data) {
            return kCastFailure;
        }
        if (!Writable(*property)) {
            return kNotWritable;
        }
        void* storage = property->Value();
        if (!IsStorageOf(*property, storage)) {
            return kCastFailure;
        }
        Move(data, storage, BytesToMove(*property, size));
        return kDone;
    });
}

template <class T>
_eError PropertySet::Get(const std::wstring& name, T& value, bool force) {
    return Reported(kGetProperty, name, [&] {
        const auto hit = Find(name);
        if (hit == entries_.end()) {
            return kNotFound;
        }
        Property* property = hit->second.get();
        if (!IsOfForm<T>(property)) {
            return kCastFailure;
        }
        if (!force && !Readable(*property)) {
            return kNotReadable;
        }
        const void* storage = property->Value();
        if (!storage) {
            return kCastFailure;
        }
        CopyOut(storage, value);
        return kDone;
    });
}

template <class T>
_eError PropertySet::Set(const std::wstring& name, const T& value, bool force) {
    return Reported(kSetProperty, name, [&] {
        const auto hit = Find(name);
        if (hit == entries_.end()) {
            return kNotFound;
        }
        Property* property = hit->second.get();
        if (!IsOfForm<T>(property)) {
            return kCastFailure;
        }
        if (!force && !Writable(*property)) {
            return kNotWritable;
        }
        property->Assign(&value);
        return kDone;
    });
}

template <class T>
_eError PropertySet::Range(const std::wstring& name, T* min, T* max) {
    return Unreported([&] {
        const auto hit = Find(name);
        if (hit == entries_.end()) {
            return ePropertyNotFound;
        }
        if (!IsOfForm<T>(hit->second.get()) || !min || !max) {
            return ePointerCastFailure;
        }
        T low{};  // a property that fails half-way leaves the caller's variables alone
        T high{};
        if (!hit->second->Range(&low, &high)) {
            return ePropertyMinMaxNotSpecified;
        }
        *min = low;
        *max = high;
        return eSuccess;
    });
}

template <class T>
_eError PropertySet::Default(const std::wstring& name, T* out) {
    return Unreported([&] {
        const auto hit = Find(name);
        if (hit == entries_.end()) {
            return ePropertyNotFound;
        }
        if (!IsOfForm<T>(hit->second.get()) || !out) {
            return ePointerCastFailure;
        }
        T value{};
        if (!hit->second->Default(&value)) {
            return ePropertyDefaultValNotSpecified;
        }
        *out = std::move(value);
        return eSuccess;
    });
}

// The five typed forms.
#define TARNEX_TYPED_FORM(T)                                                                 \
    _eError PropertySet::GetProperty(const std::wstring& name, T& value, bool force) {       \
        return Get(name, value, force);                                                      \
    }                                                                                        \
    _eError PropertySet::SetProperty(const std::wstring& name, const T& value, bool force) { \
        return Set(name, value, force);                                                      \
    }                                                                                        \
    _eError PropertySet::GetPropertyDefault(const std::wstring& name, T* out) {              \
        return Default(name, out);                                                           \
    }
TARNEX_TYPED_FORM(std::int32_t)
TARNEX_TYPED_FORM(float)
TARNEX_TYPED_FORM(bool)
TARNEX_TYPED_FORM(std::int64_t)
TARNEX_TYPED_FORM(std::wstring)
#undef TARNEX_TYPED_FORM

_eError PropertySet::GetPropertyRange(const std::wstring& name, std::int64_t* min,
                                      std::int64_t* max) {
    return Range(name, min, max);
}

_eError PropertySet::GetPropertyRange(const std::wstring& name, float* min, float* max) {
    return Range(name, min, max);
}

_eError PropertySet::GetPropertyRange(const std::wstring& name, std::int32_t* min,
                                      std::int32_t* max) {
    return Range(name, min, max);
}

}  // namespace base_types
