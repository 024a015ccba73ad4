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

// Appends mappings that are not yet there.
class MappingList {
public:
    explicit MappingList(Mappings& mappings) : mappings_(mappings) {}

    bool Append(Mapping&& mapping) {
        if (Contains(mapping)) return false;
        if (mappings_.empty()) mappings_.reserve(kFewStatements);
        mappings_.push_back(std::move(mapping));
        return true;
    }

private:
    // Enters the mappings that were appended since it was asked last, and then this one, which is
    // to be appended unless it is there.
    bool Contains(const Mapping& mapping) {
        if (mappings_.size() < kFewStatements) {
            return std::ranges::find(mappings_, mapping) != mappings_.end();
        }
        for (; indexed_ < mappings_.size(); ++indexed_) Enter(mappings_[indexed_], indexed_);
        if (!Enter(mapping, indexed_)) return true;
        ++indexed_;
        return false;
    }

    // `position`: where it stands, or will.
    bool Enter(const Mapping& mapping, std::size_t position) {
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
                         std::span<const std::wstring_view> targets, const Mapping& source,
                         MappingList& mappings) {
    for (std::size_t next = targets.size(); next >= 2; next -= 2) {
        UpperName instance(targets[next - 2]);
        if (!description.effectInstances.contains(instance)) {
            return cursor.Refused(status::kUnknownInstance, targets[next - 2]);
        }
        if (!mappings.Append({source.property, source.access, std::move(instance),
                              WideText(targets[next - 1])})) {
            return cursor.Refused(status::kDefinedTwice, targets[next - 1]);
        }
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
        const Mapping source{UpperName(pieces[name]), access.Value(), {}, {}};
        const std::int32_t result =
            TakeTargets(cursor, description, std::span(pieces.begin() + name + 1, pieces.end()),
                        source, mappings);
        if (result != status::kRead) return result;
    }
    return status::kRead;
}

}  // namespace compositions
