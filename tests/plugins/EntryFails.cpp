// The entry hands a factory out and returns an error all the same.
#include "plugins/BareEffect.h"

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<test_plugins::BareFactory>(std::vector<std::wstring>{L"never.seen"});
    return fx::eNotInitialized;
}
