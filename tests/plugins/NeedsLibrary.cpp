// Cannot be loaded without its own library (NeededLibrary.cpp), best beside it.
#include "plugins/BareEffect.h"

extern "C" int NeededByPlugin();

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<test_plugins::BareFactory>(
        std::vector<std::wstring>(static_cast<std::size_t>(NeededByPlugin()), L"needy"));
    return fx::eSuccess;
}
