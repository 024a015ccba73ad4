#pragma once

// A script's bytes as lines and columns. A column is a character: a UTF-8 sequence, or a byte that
// belongs to none; a tab is one character.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "check/Diagnostics.h"

namespace tarnexctl {

struct Place {
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

// A line of the script as it is shown, and what to mark in it, in columns of the terminal.
struct Excerpt {
    std::string text;
    std::size_t markAt = 0;
    std::size_t markWidth = 1;
};

class SourceText {
public:
    // The bytes stay the caller's.
    explicit SourceText(std::string_view bytes);

    Place At(std::uint64_t offset) const;
    std::uint64_t LineOf(std::uint64_t offset) const { return At(offset, false).line; }
    // Whether nothing but blanks stands in front of it on its line.
    bool IsFirstOfLine(std::uint64_t offset) const;
    // The line that holds the range's begin; a long one is cut around it.
    Excerpt Around(ByteRange range) const;

private:
    Place At(std::uint64_t offset, bool withColumn) const;
    std::string_view Line(std::uint64_t line) const;
    // In UTF-8: as it stands when the whole script is, else as the system's code page has it.
    std::string Decoded(std::string_view bytes) const;

    std::string_view bytes_;
    std::vector<std::uint64_t> lines_;  // where each begins
    bool isUtf8_;
};

}  // namespace tarnexctl
