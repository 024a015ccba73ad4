// The effect says nothing of itself.
#include "plugins/BareEffect.h"

namespace {

class SilentEffect : public test_plugins::BareEffect {
public:
    using BareEffect::BareEffect;
    const fx::EffectDescriptor* GetDescriptor() override { return nullptr; }
};

class SilentFactory : public test_plugins::BareFactory {
public:
    SilentFactory() : BareFactory({L"silent"}) {}

    fx::_eError CreateFX(std::uint64_t, std::shared_ptr<fx::IBaseFX>& out) override {
        out = std::make_shared<SilentEffect>(L"silent");
        return fx::eSuccess;
    }
};

}  // namespace

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<SilentFactory>();
    return fx::eSuccess;
}
