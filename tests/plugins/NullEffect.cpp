// Creating the effect returns success and leaves the pointer empty.
#include "plugins/BareEffect.h"

namespace {

class EmptyHandedFactory : public test_plugins::BareFactory {
public:
    EmptyHandedFactory() : BareFactory({L"empty.handed"}) {}

    fx::_eError CreateFX(std::uint64_t, std::shared_ptr<fx::IBaseFX>&) override {
        return fx::eSuccess;
    }
};

}  // namespace

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<EmptyHandedFactory>();
    return fx::eSuccess;
}
