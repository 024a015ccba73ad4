#pragma once

#include "platform/Event.h"

namespace helpers {

// A manual-reset event, not signalled at first. Any thread.
class Event {
public:
    // The event cannot be created.
    class EventException {};

    using Creator = platform::EventHandle (*)();

    Event() = default;
    ~Event() { Close(); }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    // Throws EventException when the system refuses.
    void Create(Creator creator = &platform::CreateManualEvent) {
        Close();
        handle_ = creator();
        if (handle_ == 0) throw EventException();
    }
    void Signal() { platform::SignalEvent(handle_); }
    bool Wait(unsigned milliseconds) { return platform::WaitForEvent(handle_, milliseconds); }
    platform::EventHandle Handle() const { return handle_; }
    void Close() {
        if (handle_ != 0) platform::CloseEvent(handle_);
        handle_ = 0;
    }

private:
    platform::EventHandle handle_ = 0;
};

}  // namespace helpers
