#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compositions/Description.h"

namespace tarnexctl {

inline constexpr std::size_t kMostDrawnPoints = 5000;

// Envelopes as an SVG picture, one below the other: the points as written, joined as their kinds
// name it. A point that cannot be placed is left out and told in `problems`. A Failure when there
// are more points than kMostDrawnPoints.
std::string EnvelopePicture(const std::string& title, const compositions::Envelopes& envelopes,
                            std::vector<std::string>& problems);

// A plain number: perhaps a sign, digits, perhaps a full stop and digits. Nothing for other texts,
// some of which scripts can hold, and for numbers beyond all bounds.
std::optional<double> PlainNumber(std::wstring_view text);

}  // namespace tarnexctl
