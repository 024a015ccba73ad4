#include "platform/Event.h"

#include <windows.h>

namespace platform {
namespace {

HANDLE Native(EventHandle event) {
    return reinterpret_cast<HANDLE>(event);
}

}  // namespace

EventHandle CreateManualEvent() {
    return reinterpret_cast<EventHandle>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
}

void SignalEvent(EventHandle event) {
    SetEvent(Native(event));
}

bool WaitForEvent(EventHandle event, unsigned milliseconds) {
    return WaitForSingleObject(Native(event), milliseconds) == WAIT_OBJECT_0;
}

void CloseEvent(EventHandle event) {
    CloseHandle(Native(event));
}

}  // namespace platform
