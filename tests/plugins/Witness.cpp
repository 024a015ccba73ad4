// Says on standard output when its factory, an effect or its own static objects are destroyed.
#include <cstdio>

#include "plugins/BareEffect.h"

namespace {

void Say(const char* text) {
    std::printf("witness: %s destroyed\n", text);
    std::fflush(stdout);
}

class WitnessEffect : public test_plugins::BareEffect {
public:
    using BareEffect::BareEffect;
    ~WitnessEffect() override { Say("effect"); }
};

class WitnessFactory : public test_plugins::BareFactory {
public:
    WitnessFactory() : BareFactory({L"witness"}) {}
    ~WitnessFactory() override { Say("factory"); }

    fx::_eError CreateFX(std::uint64_t, std::shared_ptr<fx::IBaseFX>& out) override {
        out = std::make_shared<WitnessEffect>(L"witness");
        return fx::eSuccess;
    }
};

}  // namespace

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<WitnessFactory>();
    return fx::eSuccess;
}
