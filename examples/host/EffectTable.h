#pragma once

#include "tarnex/GlobalFxFactory.h"

namespace host {

// Prints every effect that the factory lists.
void PrintEffects(tarnex::GlobalFXFactory& factory);

}  // namespace host
