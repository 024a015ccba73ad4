#pragma once

// The conformance run: loads a plug-in library into this process, uses every operation of its
// interface and reports what breaks the rules. Run it in a child process: the library may do
// anything.

#include <filesystem>
#include <memory>
#include <string>

#include "fx/IVorelFXFactory.h"
#include "probe/ChildReport.h"

namespace tarnexctl {

struct ConformanceScope {
    bool rendering = true;  // also the operations of the rendering engine, with null arguments
};

void RunConformance(const std::string& path, const ConformanceScope& scope, ChildReport& report);

// The parts of the run, each over what the parts before it have handed out.

// One effect: creates two instances of it and looks at everything they offer. Null when it cannot
// be created; else one instance, to be released by the caller.
std::shared_ptr<fx::IBaseFX> CheckEffect(fx::IVorelFXFactory& factory, std::uint64_t index,
                                         const ConformanceScope& scope, ChildReport& report);

// The property operations of two instances of one effect, called `effect` in what is found.
void CheckProperties(base_types::IPropertySet& first, base_types::IPropertySet& second,
                     const std::string& effect, ChildReport& report);

// The operations that serve the rendering engine.
void CheckRenderingSlots(fx::IBaseFX& effect, const std::shared_ptr<fx::IBaseFX>& other,
                         const std::string& name, ChildReport& report);

}  // namespace tarnexctl
