// Never comes back from its entry.

#include <chrono>
#include <thread>

#include "fx/IVorelFXFactory.h"
#include "tarnex/Export.h"

extern "C" TARNEX_EXPORT fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>&) {
    for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
}
