#pragma once

#include <filesystem>

#include "tarnex/GlobalFxFactory.h"

namespace host {

// Registers every script of the folder by name and one by path, and shows what came of it.
void RegisterCompositions(tarnex::GlobalFXFactory& factory, const std::filesystem::path& folder);

// Shows the descriptors of the first filter and of the first composition that is none.
void ShowCompositions(tarnex::GlobalFXFactory& factory);

// Removes a composition and registers it again, which revives it.
void ReviveComposition(tarnex::GlobalFXFactory& factory, const std::filesystem::path& folder);

// Creates a composition from a script while archives are written, and another from that archive.
void ShowArchive(tarnex::GlobalFXFactory& factory, const std::filesystem::path& folder);

}  // namespace host
