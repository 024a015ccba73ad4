#pragma once

// Sets of characters, tested with one look into a table that up to 64 sets share. Read-only once
// built; any thread may test.

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace helpers::scripting {

// A handle to a set; valid while its CharacterSets lives.
struct CharacterSet {
    const std::uint64_t* table = nullptr;  // one word per character below 256
    std::uint64_t bit = 0;
    const std::wstring* above = nullptr;  // the set's characters from 256 on; null for none
    bool complement = false;              // of the characters from 256 on, those not in `above`
    std::uint32_t index = 0;              // counts the sets of one CharacterSets

    bool Has(wchar_t character) const {
        const auto code = static_cast<std::make_unsigned_t<wchar_t>>(character);
        if (code < 256) [[likely]]
            return (table[code] & bit) != 0;
        return HasAbove(character);
    }

private:
    bool HasAbove(wchar_t character) const;
};

class CharacterSets {
public:
    CharacterSets() = default;
    CharacterSets(const CharacterSets&) = delete;
    CharacterSets& operator=(const CharacterSets&) = delete;

    // Equal sets get one handle, in whatever order their characters are named.
    const CharacterSet& Add(std::wstring_view characters) { return Add(characters, false); }
    const CharacterSet& AddComplement(std::wstring_view characters) {
        return Add(characters, true);
    }
    std::size_t Count() const { return known_.size(); }

private:
    struct Known {
        std::wstring sorted;
        CharacterSet set;
    };
    using Table = std::array<std::uint64_t, 256>;

    const CharacterSet& Add(std::wstring_view characters, bool complement);

    std::deque<Table> tables_;
    std::deque<std::wstring> above_;
    std::deque<Known> known_;
};

}  // namespace helpers::scripting
