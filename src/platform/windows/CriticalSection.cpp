#include "platform/CriticalSection.h"

#include <windows.h>

namespace platform {
namespace {

static_assert(sizeof(CRITICAL_SECTION) == kCriticalSectionSize);
static_assert(alignof(CRITICAL_SECTION) == 8);

CRITICAL_SECTION* Section(void* storage) {
    return static_cast<CRITICAL_SECTION*>(storage);
}

}  // namespace

void InitializeCriticalSection(void* storage) {
    ::InitializeCriticalSection(Section(storage));
}

void DeleteCriticalSection(void* storage) {
    ::DeleteCriticalSection(Section(storage));
}

void EnterCriticalSection(void* storage) {
    ::EnterCriticalSection(Section(storage));
}

void LeaveCriticalSection(void* storage) {
    ::LeaveCriticalSection(Section(storage));
}

}  // namespace platform
