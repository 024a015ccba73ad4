#pragma once

#include <string>
#include <vector>

namespace tarnexctl {

// One row of comma-separated values, with its line end. Values that need it stand in quotes.
std::string CsvRow(const std::vector<std::string>& values);

}  // namespace tarnexctl
