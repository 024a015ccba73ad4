#include "platform/Event.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace platform {
namespace {

// Descriptor 0 is one, too.
int Descriptor(EventHandle event) {
    return static_cast<int>(event) - 1;
}

}  // namespace

EventHandle CreateManualEvent() {
    const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    return static_cast<EventHandle>(descriptor) + 1;  // none, -1, becomes 0
}

void SignalEvent(EventHandle event) {
    // Nobody reads the count, so that it stays signalled; it fails only when it is at its limit.
    static_cast<void>(eventfd_write(Descriptor(event), 1));
}

bool WaitForEvent(EventHandle event, unsigned milliseconds) {
    pollfd entry{Descriptor(event), POLLIN, 0};
    return poll(&entry, 1, static_cast<int>(milliseconds)) == 1;
}

void CloseEvent(EventHandle event) {
    close(Descriptor(event));
}

}  // namespace platform
