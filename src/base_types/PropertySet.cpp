#include "sdk/PropertySet.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "base_types/NameOrder.h"
#include "base_types/NamePlaces.h"
#include "base_types/PropertySetLock.h"

namespace base_types {
namespace {

constexpr char kGetProperties[] = "base_types::PropertySet::GetProperties";
constexpr char kGetPropertyInfo[] = "base_types::PropertySet::GetPropertyInfo";

// Lines of the debugger output's fixed texts: whoever searches captured output relies on them.
constexpr int kGetPropertiesLine = 92;
constexpr int kGetPropertyInfoLine = 119;

// What the properties held that a copy has assigned to. They get it back unless the copy came to
// its end.
class OldValues {
public:
    explicit OldValues(std::size_t most) { values_.reserve(most); }
    OldValues(const OldValues&) = delete;
    OldValues& operator=(const OldValues&) = delete;
    ~OldValues() {
        for (const Value& value : values_) {
            try {
                const bool isText = value.property->Info().type == ePropertyString;
                value.property->Assign(isText ? static_cast<const void*>(&value.text)
                                              : value.number);
            } catch (...) {
                // A property that refuses its own old value: nothing more can be done for it.
            }
        }
    }

    void Keep(Property& property) {
        const void* storage = property.Value();
        if (!storage) return;
        Value& value = values_.emplace_back(property);
        try {
            if (property.Info().type == ePropertyString) {
                value.text = *static_cast<const std::wstring*>(storage);
            } else {
                const auto size = static_cast<std::size_t>(std::max(0, property.Info().size));
                std::memcpy(value.number, storage, std::min(size, sizeof value.number));
            }
        } catch (...) {
            values_.pop_back();
            throw;
        }
    }
    void Forget() { values_.clear(); }

private:
    struct Value {
        explicit Value(Property& changed) : property(&changed) {}
        Property* property;
        alignas(8) unsigned char number[8] = {};
        std::wstring text;
    };
    std::vector<Value> values_;
};

}  // namespace

// Sets of different modules meet when properties are copied: the layout is an interface.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
#endif
struct PropertySet::Layout {
    static_assert(sizeof criticalSection_ == platform::kCriticalSectionSize);
    static_assert(offsetof(PropertySet, criticalSection_) == sizeof(void*));
    static_assert(offsetof(PropertySet, entries_) == 48);
    static_assert(offsetof(PropertySet, lastHit_) == 48 + sizeof(Entries));
    static_assert(offsetof(PropertySet, sortedCount_) ==
                  48 + sizeof(Entries) + sizeof(Entries::iterator));
    static_assert(offsetof(PropertySet, places_) ==
                  48 + sizeof(Entries) + sizeof(Entries::iterator) + 8);
    static_assert(sizeof(Entry) == sizeof(std::wstring) + sizeof(Property*));
};
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

PropertySet::PropertySet() : lastHit_(entries_.end()), sortedCount_(0) {
    platform::InitializeCriticalSection(criticalSection_);
}

PropertySet::~PropertySet() {
    Entries().swap(entries_);
    platform::DeleteCriticalSection(criticalSection_);
}

void PropertySet::AddProperty(std::wstring name, std::unique_ptr<Property> property) {
    Lock lock(*this);
    // lastHit_ may dangle from here to the next lookup, which sorts first and so resets it.
    entries_.emplace_back(std::move(name), std::move(property));
}

void PropertySet::Clear() {
    Entries discarded;  // destroyed after the lock is released: destructors are others' code
    Lock lock(*this);
    discarded.swap(entries_);
    lastHit_ = entries_.end();
    sortedCount_ = 0;
    places_.clear();
}

void PropertySet::Sort() {
    if (sortedCount_ >= entries_.size()) {
        return;
    }
    const auto before = [](const Entry& left, const Entry& right) {
        return CompareNames(left.first, right.first) < 0;
    };
    const auto tail = entries_.begin() + static_cast<std::ptrdiff_t>(sortedCount_);
    // Stable, so that of equal names the one added first stays in front.
    std::stable_sort(tail, entries_.end(), before);
    if (tail != entries_.begin()) {
        std::inplace_merge(entries_.begin(), tail, entries_.end(), before);
    }
    lastHit_ = entries_.end();
    sortedCount_ = static_cast<std::uint32_t>(entries_.size());
}

PropertySet::Entries::iterator PropertySet::Find(const std::wstring& name) {
    Sort();
    if (lastHit_ != entries_.end() && SameName(lastHit_->first, name)) {
        return lastHit_;
    }
    NamePlaces places(places_, entries_.size());
    const std::uint64_t hash = HashName(name);
    const std::size_t index =
        places.Find(hash, [&](std::size_t i) { return SameName(entries_[i].first, name); });
    if (index != NamePlaces::kNone) {
        lastHit_ = entries_.begin() + static_cast<std::ptrdiff_t>(index);
        return lastHit_;
    }
    const auto hit = Search(name);
    if (hit != entries_.end()) {
        lastHit_ = hit;
        places.Remember(hash, static_cast<std::size_t>(hit - entries_.begin()));
    }
    return hit;
}

PropertySet::Entries::iterator PropertySet::Search(const std::wstring& name) {
    auto first = entries_.begin();
    auto last = entries_.end();
    if (lastHit_ != last) {
        (CompareNames(lastHit_->first, name) < 0 ? first : last) = lastHit_;
    }
    const auto hit = std::lower_bound(first, last, name, [](const Entry& entry, const auto& key) {
        return CompareNames(entry.first, key) < 0;
    });
    return hit == entries_.end() || hit->first != name ? entries_.end() : hit;
}

_eError PropertySet::GetProperties(std::vector<std::wstring>& names) {
    return RunWithDebuggerLine(kGetProperties, kGetPropertiesLine, [&] {
        std::vector<std::wstring> found;
        {
            Lock lock(*this);
            found.reserve(entries_.size());
            for (const Entry& entry : entries_) {
                found.push_back(entry.first);
            }
        }
        names.swap(found);
        return eSuccess;
    });
}

_eError PropertySet::GetPropertyInfo(const std::wstring& name, PropertyInfo* info) {
    return RunWithDebuggerLine(kGetPropertyInfo, kGetPropertyInfoLine, [&] {
        bool found = false;
        {
            Lock lock(*this);
            const auto hit = Find(name);
            found = hit != entries_.end();
            if (found && hit->second && info) {
                *info = hit->second->Info();
                return eSuccess;
            }
        }
        return found ? helpers::ReportPropertyError(ePointerCastFailure, kGetPropertyInfo)
                     : helpers::ReportPropertyError(ePropertyNotFound, kGetPropertyInfo, name);
    });
}

_eError PropertySet::CopyPropertiesFrom(const std::shared_ptr<PropertySet>& source) {
    if (!source) {
        return eNotImplemented;
    }
    try {
        Lock lock(*this);
        Sort();
        if (source.get() != this) {
            source->Sort();
            CopyPairs(source->entries_);
        }
        return eSuccess;
    } catch (const Exception& exception) {
        return exception.code;
    } catch (...) {
        return eNonInterfaceException;
    }
}

void PropertySet::CopyPairs(Entries& source) {
    const std::size_t count = std::min(source.size(), entries_.size());
    OldValues old(count);
    for (std::size_t i = 0; i != count; ++i) {
        Property* from = source[i].second.get();
        Property* to = entries_[i].second.get();
        if (!from || !to || from->Info().type != to->Info().type) {
            continue;
        }
        const std::int32_t type = from->Info().type;
        if (type < ePropertyInt || type > ePropertyString) {
            continue;
        }
        if (const void* value = from->Value()) {
            old.Keep(*to);
            to->Assign(value);
        }
    }
    old.Forget();
}

}  // namespace base_types
