#pragma once

#include <string>
#include <utility>
#include <vector>

namespace platform {

// One line that CommandLineToArgvW takes apart into the same texts again. All in UTF-8.
std::wstring CommandLineOf(const std::string& program, const std::vector<std::string>& arguments);

// This process's environment block with those variables added or replaced.
std::wstring EnvironmentWith(const std::vector<std::pair<std::string, std::string>>& variables);

}  // namespace platform
