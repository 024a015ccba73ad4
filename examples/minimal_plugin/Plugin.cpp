// A whole effect library: one effect with two properties.

#include "sdk/EffectBase.h"
#include "sdk/EffectFactory.h"

namespace {

class Glow : public fx::EffectBase {
public:
    Glow() : EffectBase(L"Glow\\Minimal", fx::eEffectStandard | fx::eEffectFilter, 1) {
        Bind(L"Strength", strength_, {.defaultValue = 0.5f, .range = std::pair(0.0f, 1.0f)});
        Bind(L"Enabled", enabled_, {.defaultValue = true});
    }

private:
    float strength_ = 0;
    bool enabled_ = false;
};

void RegisterEffects(fx::EffectFactory& factory) {
    factory.Add<Glow>(L"Glow");
}

}  // namespace

TARNEX_PLUGIN(RegisterEffects)
