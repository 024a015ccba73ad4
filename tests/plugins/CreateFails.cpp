// The effect in the middle cannot be created, and something is left in the pointer.
#include "plugins/BareEffect.h"

namespace {

class FailingFactory : public test_plugins::BareFactory {
public:
    FailingFactory() : BareFactory({L"failing.first", L"failing.middle", L"failing.last"}) {}

    fx::_eError CreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out) override {
        const fx::_eError code = BareFactory::CreateFX(index, out);
        return index == 1 ? fx::eDeviceNotSet : code;
    }
};

}  // namespace

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<FailingFactory>();
    return fx::eSuccess;
}
