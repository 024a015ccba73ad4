#pragma once

#include <filesystem>

namespace host {

// Prints the newest trace log in the folder, once the library has written it out.
void PrintTraceLog(const std::filesystem::path& folder);

}  // namespace host
