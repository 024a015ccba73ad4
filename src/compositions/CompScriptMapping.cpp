#include <algorithm>
#include <span>
#include <string>
#include <utility>

#include "compositions/AccessWords.h"
#include "compositions/CompScriptSections.h"
#include "compositions/HashIndex.h"
#include "compositions/language/Symbols.h"

namespace compositions {
namespace {

// Keeps mappings that are not yet there.
class MappingList {
public:
    explicit MappingList(Mappings& mappings) : mappings_(mappings) {}

    // A new one at the end, to be written.
    Mapping& Add() {
        if (mappings_.empty()) mappings_.reserve(kFewStatements);
        return mappings_.emplace_back();
    }
    // Whether no other one is as the last one is, which is dropped otherwise.
    bool KeepLast() {
        if (!IsThereTwice()) return true;
        mappings_.pop_back();
        return false;
    }

private:
    // Enters the mappings that were added since it was asked last.
    bool IsThereTwice() {
        if (mappings_.size() <= kFewStatements) {
            const auto last = mappings_.end() - 1;
            return std::find(mappings_.begin(), last, *last) != last;
        }
        bool isNew = true;
        for (; isNew && indexed_ < mappings_.size(); ++indexed_) isNew = Enter(indexed_);
        return !isNew;
    }

    bool Enter(std::size_t position) {
        const Mapping& mapping = mappings_[position];
        const std::uint64_t hash =
            HashOf(mapping.targetProperty,
                   HashOf(mapping.instance.View(), HashOf(mapping.property.View())));
        return index_.Insert(hash, position,
                             [&](std::size_t other) { return mappings_[other] == mapping; });
    }

    Mappings& mappings_;
    std::size_t indexed_ = 0;
    HashIndex index_;
};

// Takes the targets from the last to the first: that is the order of the list.
std::int32_t TakeTargets(ScriptCursor& cursor, CompositionDescription& description,
                         std::span<const std::wstring_view> targets, const UpperName& property,
                         std::uint32_t access, MappingList& mappings) {
    for (std::size_t next = targets.size(); next >= 2; next -= 2) {
        UpperName instance(targets[next - 2]);
        if (!description.effectInstances.contains(instance)) {
            return cursor.Refused(status::kUnknownInstance, targets[next - 2]);
        }
        Mapping& mapping = mappings.Add();
        mapping.property = property;
        mapping.access = access;
        mapping.instance = std::move(instance);
        mapping.targetProperty = targets[next - 1];
        if (!mappings.KeepLast()) return cursor.Refused(status::kDefinedTwice, targets[next - 1]);
    }
    cursor.Taken();
    return status::kRead;
}

}  // namespace

std::int32_t ReadMapping(ScriptCursor& cursor, CompositionDescription& description) {
    if (!cursor.FindHeader(Section::kMapping, R42)) return status::kNoMapping;
    MappingList mappings(description.mappings);
    Pieces& pieces = cursor.Scratch();
    while (cursor.Match(R46, pieces)) {
        std::size_t name = 0;  // the first piece between quotes
        while (!cursor.IsQuoted(pieces[name])) ++name;
        AccessFlags access;
        for (std::size_t i = 0; i < name; ++i) {
            // Words that mean nothing here are passed over.
            if (access.Take(pieces[i]) == AccessWord::kRefused) {
                return cursor.Refused(access.Status(), pieces[i]);
            }
        }
        const std::int32_t result =
            TakeTargets(cursor, description, std::span(pieces.begin() + name + 1, pieces.end()),
                        UpperName(pieces[name]), access.Value(), mappings);
        if (result != status::kRead) return result;
    }
    return status::kRead;
}

}  // namespace compositions
