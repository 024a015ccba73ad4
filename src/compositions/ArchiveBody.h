#pragma once

// The body of a script archive: a whole description as bytes, without the file's header.
// docs/archive_format.md describes them. Any thread; distinct objects.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compositions/CompositionDescription.h"

namespace compositions {

// Appends the description to `bytes`. Throws std::bad_alloc alone.
void SaveArchiveBody(const CompositionDescription& description, std::string& bytes);

// Replaces the description by the one that `bytes` begin with and returns how many of them it took.
// Throws arch_exception when they end early, leaving what was read so far. Memory is linear in
// their number, whatever counts they hold; nodes may be nested without limit. The offset of each of
// the body's 17 fields is appended to `fields`, as far as the reading comes.
std::size_t LoadArchiveBody(std::string_view bytes, CompositionDescription& description,
                            std::vector<std::uint64_t>* fields = nullptr);

}  // namespace compositions
