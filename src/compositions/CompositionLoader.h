#pragma once

// Reading a composition from its files. Caller serialises.

#include <cstdint>
#include <memory>
#include <string>

#include "compositions/CompScript.h"
#include "compositions/CompositionEntry.h"

namespace compositions {

// The status of a description whose archive turned out damaged: none of the script reader's.
inline constexpr std::int32_t kDamagedArchive = 100;

// Reads the script at `path`, whatever it holds; a file that cannot be read is an empty script.
std::shared_ptr<CompositionScript> ReadCompositionScript(const std::wstring& path);

// Reads the archive at `path`; null when there is none.
std::shared_ptr<CompositionScript> ReadCompositionArchive(const std::wstring& path);

// Loads the composition at `path` and fills `entry`. What is read, and whether an archive is
// written beside the script, is a matter of the user's settings:
// - converting (ConverterSettings::IsConverting): the script alone is read, whether or not there is
//   an archive; with ConverterSettings::WritesArchives its archive is written each time, unless the
//   script itself is the file of that name.
// - else: `path` is read as an archive, and as a script when it is none or is damaged.
// False, with `entry` unchanged, when there is no file, it is faulty, or a setting or path is
// longer than the settings allow. An archive that cannot be written fails nothing.
bool LoadCompositionDescription(const std::wstring& path, CompositionEntry& entry);

}  // namespace compositions
