#include "platform/MachineFlag.h"

namespace platform {
namespace {

// One byte that every process that maps the library shares; it lives as long as any of them.
#ifdef _MSC_VER
#pragma section(".shared", read, write, shared)
__declspec(allocate(".shared")) volatile unsigned char g_TarnexInstanceTaken = 0;
#else
__attribute__((section(".shared"), shared)) volatile unsigned char g_TarnexInstanceTaken = 0;
#endif
static_assert(sizeof g_TarnexInstanceTaken == 1, "whatever else is shared strangers can change");

}  // namespace

bool TakeMachineFlag() {
    // Deliberately no atomic exchange: two processes that load the library at the same instant may
    // both become owners.
    if (g_TarnexInstanceTaken != 0) return false;
    g_TarnexInstanceTaken = 1;
    return true;
}

}  // namespace platform
