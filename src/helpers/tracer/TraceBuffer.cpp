#include "helpers/tracer/TraceBuffer.h"

#include <algorithm>

#include "platform/Thread.h"

namespace helpers {

bool TraceBuffer::Append(const char16_t* text, std::uint32_t units) {
    auto used = UsedWord();
    // relaxed; only keeps the counter from running away while the buffer stays full.
    if (used.load(std::memory_order_relaxed) >= kRecordAreaBytes) return false;
    const std::int32_t size = Record::Size(units);
    // acquire; pairs with the release in Reset, so that the area is seen zeroed.
    const std::int32_t offset = used.fetch_add(size, std::memory_order_acquire);
    if (offset >= kRecordAreaBytes) {
        // Put it back, unless others reserved meanwhile or the buffer was emptied: a store would
        // undo that. relaxed; where it succeeds the buffer was full and stays so.
        std::int32_t expected = offset + size;
        used.compare_exchange_strong(expected, offset, std::memory_order_relaxed);
        return false;
    }
    if (offset + size > kRecordRoomBytes) {
        At(offset).PublishFiller(units);  // the message goes whole into the other buffer
        return false;
    }
    At(offset).Publish(platform::CounterTime(), platform::CurrentThreadId(), text, units);
    return true;
}

std::int32_t TraceBuffer::Used() const {
    // acquire; pairs with the other buffer's user in Tracer::SwitchFrom (an emptied buffer is seen
    // emptied) and orders the walk behind the reservation.
    const std::int32_t used = UsedWord().load(std::memory_order_acquire);
    return std::clamp(used, 0, kRecordAreaBytes);
}

bool TraceBuffer::Passes(std::uint32_t threadId) const {
    // relaxed; a lone setting.
    const std::uint32_t filter =
        std::atomic_ref<std::uint32_t>(layout_.threadFilter).load(std::memory_order_relaxed);
    return filter == 0 || filter == threadId;
}

void TraceBuffer::Close() {
    auto used = UsedWord();
    // relaxed; the loop's exchange decides.
    std::int32_t offset = used.load(std::memory_order_relaxed);
    while (offset < kRecordAreaBytes) {
        // acquire; pairs with the release in Reset. The filler is read by this same thread.
        if (used.compare_exchange_weak(offset, kRecordAreaBytes, std::memory_order_acquire,
                                       std::memory_order_relaxed)) {
            At(offset).PublishFiller(static_cast<std::uint32_t>(kRecordAreaBytes - offset) / 2);
            return;
        }
    }
}

void TraceBuffer::Clear(std::int32_t begin, std::int32_t end) {
    std::memset(layout_.records + begin, 0, static_cast<std::size_t>(end - begin));
}

bool TraceBuffer::Reset(std::int32_t walked) {
    auto used = UsedWord();
    // relaxed; the exchange decides.
    std::int32_t now = used.load(std::memory_order_relaxed);
    do {
        // Full stays full for every value at the area's end or beyond.
        if (std::clamp(now, 0, kRecordAreaBytes) != std::min(walked, kRecordAreaBytes))
            return false;
        // release; pairs with the acquire in Append and in Used.
    } while (
        !used.compare_exchange_weak(now, 0, std::memory_order_release, std::memory_order_relaxed));
    return true;
}

void TraceBuffer::Initialize() {
    Clear(0, kRecordRoomBytes);
    std::atomic_ref<std::uint32_t>(layout_.threadFilter).store(0, std::memory_order_relaxed);
    // release; pairs with the acquire in Append.
    UsedWord().store(0, std::memory_order_release);
}

}  // namespace helpers
