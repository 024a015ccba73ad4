// The library's one exported function.

#include "Effects.h"
#include "sdk/EffectFactory.h"

namespace {

void RegisterEffects(fx::EffectFactory& factory) {
    factory.Add<video::Blur>(L"Blur");
    factory.Add<video::Levels>(L"Levels");
    factory.Add<video::TextTitle>(L"TextTitle");
    factory.Add<video::Timecode>(L"Timecode");
    factory.Add<video::Crop>(L"Crop");
}

}  // namespace

TARNEX_PLUGIN(RegisterEffects)
