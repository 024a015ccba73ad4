#pragma once

// Generated texts: from a grammar, by changing other texts, and from character classes. The same
// seed gives the same texts on every system.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "helpers/scripting/Grammar.h"

namespace generated {

// A small generator whose numbers do not depend on the C++ library.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    // Takes the numbers from the bytes, one each, for as long as there are any.
    explicit Random(std::string_view choices) : state_(0), choices_(choices) {}

    std::uint32_t Next() {
        if (!choices_.empty()) {
            const auto choice = static_cast<unsigned char>(choices_.front());
            choices_.remove_prefix(1);
            return choice;
        }
        state_ += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = (state_ ^ (state_ >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return static_cast<std::uint32_t>(mixed >> 32);
    }
    // From 0 to count - 1.
    std::uint32_t Below(std::size_t count) { return Next() % static_cast<std::uint32_t>(count); }
    bool OneIn(std::uint32_t count) { return Below(count) == 0; }

    template <class Container>
    const auto& Pick(const Container& container) {
        return container[Below(container.size())];
    }

private:
    std::uint64_t state_;
    std::string_view choices_;
};

// A text that the node is likely to match, with blanks, odd cases and now and then a comment.
std::string FromNode(const helpers::scripting::Grammar& grammar,
                     const helpers::scripting::GrammarNode& node, Random& random);

// The text with a few bytes or pieces removed, doubled, moved or replaced.
std::string Changed(std::string text, Random& random);

// Letters, digits, marks, blanks and odd bytes.
std::string Noise(Random& random);

}  // namespace generated
