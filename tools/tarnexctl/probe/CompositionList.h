#pragma once

#include "frame/Arguments.h"
#include "probe/EffectList.h"

namespace tarnexctl {

// Registers the scripts that --compositions and --register name in a factory without plug-ins, and
// appends its effects to the list, behind those of the plug-ins as in a host.
void ListCompositions(const Arguments& arguments, EffectList& list);

}  // namespace tarnexctl
