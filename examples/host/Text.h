#pragma once

// Texts for people: wide texts as UTF-8, and error codes by name.

#include <filesystem>
#include <string>

#include "tarnex/Errors.h"

namespace host {

std::string Utf8(const std::wstring& text);

// A path as the manager takes it. Throws for a name that is no text at all.
std::wstring Wide(const std::filesystem::path& path);

// The enumerator's own name.
std::string Name(tarnex::_eError code);
std::string Name(fx::_eError code);
std::string Name(base_types::_eError code);

}  // namespace host
