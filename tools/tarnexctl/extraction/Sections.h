#pragma once

// The sections of a script written from a description, without their headers: one function each.
// What a section cannot say is left out and noted.

#include <set>
#include <string>

#include "compositions/CompositionDescription.h"
#include "extraction/SectionText.h"

namespace tarnexctl {

using compositions::CompositionDescription;

// What the script declares, as far as it could be written: the names that STRUCTURE may use.
using DeclaredNames = std::set<compositions::UpperName>;

std::string SetupText(const CompositionDescription& description, Gaps& gaps);
std::string SourcesText(const CompositionDescription& description, DeclaredNames& names,
                        Gaps& gaps);
// The mixes from `firstMade` on are left to STRUCTURE, which makes them.
std::string EffectsText(const CompositionDescription& description, std::size_t firstMade,
                        DeclaredNames& names, Gaps& gaps);
std::string StructureText(const CompositionDescription& description, std::size_t firstMade,
                          const DeclaredNames& names, Gaps& gaps);
std::string PropertiesText(const CompositionDescription& description, Gaps& gaps);
std::string MappingText(const CompositionDescription& description, const DeclaredNames& names,
                        Gaps& gaps);
std::string EnvelopesText(const CompositionDescription& description, DeclaredNames& envelopes,
                          Gaps& gaps);
std::string TimelineText(const CompositionDescription& description, const DeclaredNames& envelopes,
                         Gaps& gaps);

// The first of the mixes that STRUCTURE can make by the word MIX: that and all behind it are called
// by their number, and each stands in the tree once, in their order.
std::size_t FirstMadeMix(const CompositionDescription& description);

}  // namespace tarnexctl
