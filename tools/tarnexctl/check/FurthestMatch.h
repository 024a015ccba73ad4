#pragma once

// How far a rule can be followed where it does not match: the place that keeps it from matching,
// and what could have stood there. Walks the library's own grammar over its own lexems.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "compositions/language/CompInterpreter.h"

namespace tarnexctl {

struct ExpectedLexem {
    std::uint32_t kind = 0;
    std::wstring_view keyword = {};  // empty for any

    bool operator==(const ExpectedLexem&) const = default;
};

struct FurthestMatch {
    std::size_t position = 0;             // of the text, behind blanks
    std::vector<ExpectedLexem> expected;  // there, in the order in which they were tried

    bool Expects(std::uint32_t kind) const;
    bool ExpectsKeyword(std::wstring_view keyword) const;
};

// Of rules and lexem kinds, all tried at the position. Bounded in time and memory: of a statement
// with thousands of parts the end may not be reached. The interpreter's position is left anywhere.
FurthestMatch FindFurthestMatch(compositions::CompInterpreter& interpreter,
                                std::span<const std::uint32_t> rules, std::size_t position);

}  // namespace tarnexctl
