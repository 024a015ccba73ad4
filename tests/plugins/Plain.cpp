// Works. Two effects, named after the library that is built from this source.
#include "plugins/BareEffect.h"

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<test_plugins::BareFactory>(
        std::vector<std::wstring>{PLUGIN_NAME L".first", PLUGIN_NAME L".second"});
    return fx::eSuccess;
}
