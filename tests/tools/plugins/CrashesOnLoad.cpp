// Crashes while it is being loaded.

#include "fx/IVorelFXFactory.h"
#include "tarnex/Export.h"

namespace {

struct Crash {
    Crash() {
        volatile int* volatile nowhere = nullptr;
        *nowhere = 1;
    }
} g_crash;

}  // namespace

extern "C" TARNEX_EXPORT fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>&) {
    return fx::eGenericError;
}
