// The entry throws.
#include <stdexcept>

#include "plugins/BareEffect.h"

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>&) {
    throw std::runtime_error("no factory today");
}
