// Loads, but exports another name.
#include "tarnex/Export.h"

extern "C" TARNEX_EXPORT int CreateSomethingElse() {
    return 0;
}
