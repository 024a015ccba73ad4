#pragma once

#include <cstdint>
#include <string>

namespace platform {

// "error 126: Module not found", in UTF-8.
std::string SystemErrorText(std::uint32_t code);

}  // namespace platform
