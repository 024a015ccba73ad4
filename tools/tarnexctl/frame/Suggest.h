#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnexctl {

// The candidate that `word` most likely meant (case aside); none when nothing is near. The first of
// equally near ones.
std::optional<std::string> Suggest(std::string_view word,
                                   const std::vector<std::string>& candidates);

// Letters to insert, delete, replace or swap with their neighbour to turn one text into the other.
std::size_t EditDistance(std::string_view a, std::string_view b);

}  // namespace tarnexctl
