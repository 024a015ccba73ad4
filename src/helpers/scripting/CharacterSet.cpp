#include "helpers/scripting/CharacterSet.h"

#include <algorithm>

namespace helpers::scripting {
namespace {

constexpr std::uint32_t kSetsPerTable = 64;

std::wstring Sorted(std::wstring_view characters) {
    std::wstring sorted(characters);
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    return sorted;
}

}  // namespace

bool CharacterSet::HasAbove(wchar_t character) const {
    return (above != nullptr && above->find(character) != std::wstring::npos) != complement;
}

const CharacterSet& CharacterSets::Add(std::wstring_view characters, bool complement) {
    std::wstring sorted = Sorted(characters);
    for (const Known& known : known_) {
        if (known.set.complement == complement && known.sorted == sorted) return known.set;
    }
    CharacterSet set;
    set.index = static_cast<std::uint32_t>(known_.size());
    if (set.index % kSetsPerTable == 0) tables_.emplace_back().fill(0);
    Table& table = tables_.back();
    set.table = table.data();
    set.bit = std::uint64_t{1} << (set.index % kSetsPerTable);
    set.complement = complement;
    std::wstring above;
    for (const wchar_t character : sorted) {
        const auto code = static_cast<std::make_unsigned_t<wchar_t>>(character);
        if (code < table.size()) {
            table[code] |= set.bit;
        } else {
            above.push_back(character);
        }
    }
    if (complement) {
        for (std::uint64_t& word : table) word ^= set.bit;
    }
    if (!above.empty()) set.above = &above_.emplace_back(std::move(above));
    known_.push_back({std::move(sorted), set});
    return known_.back().set;
}

}  // namespace helpers::scripting
