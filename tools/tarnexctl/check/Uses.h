#pragma once

// What is declared and not used, used and not declared, or declared twice.

#include <initializer_list>
#include <map>

#include "check/Diagnostics.h"
#include "check/SourceText.h"
#include "check/Subject.h"

namespace tarnexctl {

// Inputs, media sources, effects and mixes against STRUCTURE, and what feeds the mixes.
void CheckWiring(const Subject& subject, Diagnostics& diagnostics);

// Names that SOURCES and EFFECTS declare more than once.
void CheckRedeclarations(const Subject& subject, Diagnostics& diagnostics);

// Mapped properties against PROPERTIES, envelopes against TIMELINE, and the times of their keys.
void CheckPropertyUses(const Subject& subject, Diagnostics& diagnostics);
void CheckEnvelopeUses(const Subject& subject, Diagnostics& diagnostics);

// The statements of SOURCES and EFFECTS, or of ENVELOPES, by the name that each declares. Made only
// where something was found.
class Declarations {
public:
    Declarations(const Subject& subject, std::initializer_list<Section> sections);

    struct Declared {
        ByteRange range;         // of the name alone
        std::wstring_view name;  // in the script's own spelling
    };
    // The name's first declaration there.
    Declared Find(const compositions::UpperName& name) const;

private:
    std::map<compositions::UpperName, Declared> declared_;
};

}  // namespace tarnexctl
