// The entry returns success and leaves the pointer empty.
#include "plugins/BareEffect.h"

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>&) {
    return fx::eSuccess;
}
