// Asking for a name throws.
#include "plugins/BareEffect.h"

namespace {

class NamelessFactory : public test_plugins::BareFactory {
public:
    NamelessFactory() : BareFactory({L"nameless"}) {}

    std::wstring GetFXName(std::uint64_t) override { throw 5; }
};

}  // namespace

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<NamelessFactory>();
    return fx::eSuccess;
}
