// The effect can be created PLUGIN_GOOD_CREATIONS times, then creating it throws PLUGIN_THROWS.
#include <stdexcept>

#include "plugins/BareEffect.h"
#include "tarnex/Errors.h"
#include "vorel/Exception.h"

namespace {

class ThrowingFactory : public test_plugins::BareFactory {
public:
    ThrowingFactory() : BareFactory({L"throwing"}) {}

    fx::_eError CreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out) override {
        const fx::_eError code = BareFactory::CreateFX(index, out);
        if (created_++ >= PLUGIN_GOOD_CREATIONS) {
            throw PLUGIN_THROWS;
        }
        return code;
    }

private:
    int created_ = 0;
};

}  // namespace

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<ThrowingFactory>();
    return fx::eSuccess;
}
