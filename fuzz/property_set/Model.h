#pragma once

// A property set as its description reads: one list, searched from the front, values as bytes.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base_types/Errors.h"
#include "base_types/PropertyInfo.h"

namespace model {

using Bytes = std::vector<unsigned char>;

struct Value {
    std::wstring text;  // of a string property
    Bytes bytes;        // of any other
};

struct Entry {
    std::wstring name;
    bool isHollow = false;  // without a property object
    base_types::PropertyInfo info{};
    Value value;
    std::optional<Value> defaultValue;
    std::optional<std::pair<Value, Value>> range;
};

// What an operation answers, and whether the trace log hears of it.
struct Answer {
    base_types::_eError code;
    bool isReported;
};

class PropertySet {
public:
    void Add(Entry entry) { entries_.push_back(std::move(entry)); }
    void Clear() { entries_.clear(), sorted_ = 0; }

    std::vector<std::wstring> Names() const {
        std::vector<std::wstring> names;
        for (const Entry& entry : entries_) names.push_back(entry.name);
        return names;
    }

    // Puts everything into name order, which every look-up does, and finds the first of the name.
    Entry* Find(const std::wstring& name) {
        Sort();
        for (Entry& entry : entries_) {
            if (entry.name == name) return &entry;
        }
        return nullptr;
    }

    Answer Info(const std::wstring& name, base_types::PropertyInfo* info) {
        const Entry* entry = Find(name);
        if (!entry) return {base_types::ePropertyNotFound, true};
        if (entry->isHollow || !info) return {base_types::ePointerCastFailure, true};
        *info = entry->info;
        return {base_types::eSuccess, false};
    }

    // What stands in the way of reading or writing a value in that form; eSuccess for nothing.
    Answer Access(const std::wstring& name, std::int32_t type, std::uint32_t right, bool force) {
        const Entry* entry = Find(name);
        if (!entry) return {base_types::ePropertyNotFound, true};
        if (entry->isHollow || entry->info.type != type) {
            return {base_types::ePointerCastFailure, true};
        }
        return Right(*entry, right, force);
    }
    Answer RawAccess(const std::wstring& name, std::uint32_t right, bool hasPointers) {
        const Entry* entry = Find(name);
        if (!entry) return {base_types::ePropertyNotFound, true};
        if (entry->isHollow || entry->info.type == base_types::ePropertyString || !hasPointers) {
            return {base_types::ePointerCastFailure, true};
        }
        return Right(*entry, right, false);
    }
    Answer RangeOrDefault(const std::wstring& name, std::int32_t type, bool isRange,
                          bool hasPointers) {
        const Entry* entry = Find(name);
        if (!entry) return {base_types::ePropertyNotFound, false};
        if (entry->isHollow || entry->info.type != type || !hasPointers) {
            return {base_types::ePointerCastFailure, false};
        }
        if (isRange && !entry->range) return {base_types::ePropertyMinMaxNotSpecified, false};
        if (!isRange && !entry->defaultValue) {
            return {base_types::ePropertyDefaultValNotSpecified, false};
        }
        return {base_types::eSuccess, false};
    }

    void CopyFrom(PropertySet& source) {
        Sort();
        if (&source == this) return;
        source.Sort();
        for (std::size_t i = 0; i < std::min(entries_.size(), source.entries_.size()); ++i) {
            const Entry& from = source.entries_[i];
            Entry& to = entries_[i];
            if (from.isHollow || to.isHollow || from.info.type != to.info.type) continue;
            if (from.info.type == base_types::ePropertyRaw) continue;
            to.value = from.value;
            Normalise(to);
        }
    }

    // A bool's byte is 0 or 1 once it was assigned.
    static void Normalise(Entry& entry) {
        if (entry.info.type == base_types::ePropertyBool) {
            entry.value.bytes[0] = entry.value.bytes[0] != 0 ? 1 : 0;
        }
    }

    static std::size_t BytesToMove(const Entry& entry, std::int32_t size) {
        return static_cast<std::size_t>(std::max(0, std::min(entry.info.size, size)));
    }

private:
    static Answer Right(const Entry& entry, std::uint32_t right, bool force) {
        if (force || (entry.info.access & right) != 0) return {base_types::eSuccess, false};
        return {right == base_types::eAccessRead ? base_types::ePropertyNoAccessForReading
                                                 : base_types::ePropertyNoAccessForWriting,
                true};
    }
    void Sort() {
        if (sorted_ == entries_.size()) return;
        std::stable_sort(
            entries_.begin(), entries_.end(),
            [](const Entry& one, const Entry& other) { return one.name < other.name; });
        sorted_ = entries_.size();
    }

    std::vector<Entry> entries_;
    std::size_t sorted_ = 0;
};

}  // namespace model
