#pragma once

// A table for people: columns as wide as their widest cell, two blanks between, no trailing blanks.

#include <string>
#include <vector>

#include "frame/Writer.h"

namespace tarnexctl {

class Columns {
public:
    explicit Columns(std::vector<std::string> headings) : headings_(std::move(headings)) {}

    // Numbers stand better at the right.
    void AlignRight(std::size_t column) { right_.push_back(column); }

    // Cells are shown on one line each, whatever they hold.
    void Add(std::vector<std::string> row);

    void Print(Writer& out) const;

private:
    bool IsRight(std::size_t column) const;
    std::string Line(const std::vector<std::string>& row,
                     const std::vector<std::size_t>& widths) const;

    std::vector<std::string> headings_;
    std::vector<std::vector<std::string>> rows_;
    std::vector<std::size_t> right_;
};

}  // namespace tarnexctl
