#pragma once

// One record in a buffer, as the writing thread fills it and as the reading thread finds it.
//
// The area is zero when a record is reserved in it, and the low 16 bits of `length` are stored
// last, so that a record whose length reads as 0 is unfinished. Before it, the padding receives the
// length with kMark: with both a reader finds its way again behind a record that was never
// finished.

#include <cstring>

#include "helpers/tracer/BlockLayout.h"

namespace helpers {

class Record {
public:
    static constexpr std::uint16_t kMark = 0x8000;

    explicit Record(std::byte* start) : start_(start) {}

    static std::int32_t Size(std::uint32_t units) {
        return static_cast<std::int32_t>(sizeof(RecordHeader) + 2 * units);
    }

    // `units` is 1 to kMaxMessageUnits.
    void Publish(std::int64_t time, std::uint32_t threadId, const char16_t* text,
                 std::uint32_t units) {
        std::memcpy(start_, &time, sizeof time);
        std::memcpy(start_ + offsetof(RecordHeader, threadId), &threadId, sizeof threadId);
        const auto mark = static_cast<std::uint16_t>(units | kMark);
        std::memcpy(start_ + offsetof(RecordHeader, padding), &mark, sizeof mark);
        std::memcpy(start_ + sizeof(RecordHeader), text, 2 * units);
        FinishWith(units);
    }

    // A record that is never written out: its first code unit stays 0.
    void PublishFiller(std::uint32_t units) { FinishWith(units); }

    // The length; 0 while the record is unfinished, more than kMaxMessageUnits for a filler that
    // takes all that was left.
    std::uint32_t Length() const {
        // acquire; pairs with the release in FinishWith.
        const std::uint32_t low = Unit(0).load(std::memory_order_acquire);
        // relaxed; set before the low half by the thread that reads here, or not at all.
        return low | std::uint32_t{Unit(1).load(std::memory_order_relaxed)} << 16;
    }

    // Whether this is a finished record, to be told from the bytes alone.
    bool LooksFinished() const {
        std::uint16_t mark;
        std::memcpy(&mark, start_ + offsetof(RecordHeader, padding), sizeof mark);
        const std::uint32_t length = Length();
        return length != 0 && length <= kMaxMessageUnits && mark == (length | kMark);
    }

    std::int64_t Time() const {
        std::int64_t time;
        std::memcpy(&time, start_, sizeof time);
        return time;
    }
    std::uint32_t ThreadId() const {
        std::uint32_t id;
        std::memcpy(&id, start_ + offsetof(RecordHeader, threadId), sizeof id);
        return id;
    }
    const char16_t* Text() const {
        return reinterpret_cast<const char16_t*>(start_ + sizeof(RecordHeader));
    }
    bool IsFiller() const { return Length() > kMaxMessageUnits || Text()[0] == u'\0'; }

private:
    std::atomic_ref<std::uint16_t> Unit(int index) const {
        auto* units = reinterpret_cast<std::uint16_t*>(start_ + offsetof(RecordHeader, length));
        return std::atomic_ref<std::uint16_t>(units[index]);
    }
    void FinishWith(std::uint32_t units) {
        // relaxed; a filler above 16 bits is written and read by the log's own thread.
        if (units > 0xFFFF) {
            Unit(1).store(static_cast<std::uint16_t>(units >> 16), std::memory_order_relaxed);
        }
        // release; pairs with the acquire in Length.
        Unit(0).store(static_cast<std::uint16_t>(units), std::memory_order_release);
    }

    std::byte* start_;
};

}  // namespace helpers
