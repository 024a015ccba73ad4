// What NeedsLibrary.cpp cannot do without. No plug-in itself.
#include "tarnex/Export.h"

extern "C" TARNEX_EXPORT int NeededByPlugin() {
    return 1;
}
