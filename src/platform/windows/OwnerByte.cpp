#include "platform/OwnerByte.h"

namespace platform {
namespace {

#ifdef _MSC_VER
#pragma section(".owner", read, write)
__declspec(allocate(".owner")) unsigned char g_TarnexOwner = 1;
#else
[[gnu::section(".owner")]] unsigned char g_TarnexOwner = 1;
#endif

}  // namespace

unsigned char& OwnerByte() {
    return g_TarnexOwner;
}

}  // namespace platform
