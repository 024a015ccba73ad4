#pragma once

// Putting sections together. The reader takes the first place that reads as a section's header, be
// it within a text of another section: then the section must stand before that one.

#include <array>
#include <optional>
#include <string>

#include "compositions/ReadStatus.h"

namespace tarnexctl {

// The statements of each section; the sections without any that need not be there are left out.
using SectionTexts = std::array<std::optional<std::string>, compositions::kSectionCount>;

// The script, in the usual order but for sections that must stand before others; nothing when no
// order serves.
std::optional<std::string> InOrder(SectionTexts texts);

}  // namespace tarnexctl
