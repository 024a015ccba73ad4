// The effect's name is empty, in the factory and in its descriptor.
#include "plugins/BareEffect.h"

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<test_plugins::BareFactory>(std::vector<std::wstring>{L""});
    return fx::eSuccess;
}
