// Offers three effects when first asked, and one from then on.
#include "plugins/BareEffect.h"

namespace {

class ShrinkingFactory : public test_plugins::BareFactory {
public:
    ShrinkingFactory() : BareFactory({L"shrinking.only", L"shrinking.b", L"shrinking.c"}) {}

    std::uint32_t GetFXCount() override { return asked_++ == 0 ? 3 : 1; }

private:
    int asked_ = 0;
};

}  // namespace

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<ShrinkingFactory>();
    return fx::eSuccess;
}
