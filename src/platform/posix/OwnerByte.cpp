#include "platform/OwnerByte.h"

namespace platform {
namespace {

[[gnu::section(".owner")]] unsigned char g_TarnexOwner = 1;

}  // namespace

unsigned char& OwnerByte() {
    return g_TarnexOwner;
}

}  // namespace platform
