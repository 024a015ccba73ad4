#pragma once

// Calls virtual operations by their place in the object's table, as a host built by another
// compiler would, and reports what each answered.

#include <functional>
#include <string>

#include "fx/IBaseFX.h"
#include "tarnex/GlobalFxFactory.h"
#include "tarnex/ITarnex.h"

using Teller = std::function<void(const std::string&)>;

void CallManagerSlots(tarnex::ITarnex* manager, const Teller& say);
void CallFactorySlots(tarnex::GlobalFXFactory* factory, const Teller& say);
void CallEffectSlots(fx::IBaseFX* effect, const Teller& say);
