#pragma once

// A second, plain implementation of the archive's bytes, straight from the table in
// docs/archive_format.md: one byte at a time, recursive, without any check but the end of the
// bytes. It shares nothing with the library but the record types that both fill.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "compositions/CompositionDescription.h"

namespace plain {

// A whole file, and where its counts and lengths stand.
struct File {
    std::string bytes;
    std::vector<std::size_t> counts;   // of elements
    std::vector<std::size_t> lengths;  // of texts and names
};

File Write(const compositions::CompositionDescription& description, std::int32_t version = 2);

struct Reading {
    std::int32_t version = -1;  // -1 without a whole header
    bool whole = false;         // the description was read to its end
    compositions::CompositionDescription description;
};

Reading Read(const std::string& bytes);

}  // namespace plain
