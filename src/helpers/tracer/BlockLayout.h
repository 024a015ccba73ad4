#pragma once

// The layout of the per-process block: an interface between all modules of a process, however they
// were built. Text in it is UTF-16 on every system. Handles lie unaligned and are copied bytewise;
// everything that threads share is an aligned piece of at most 4 bytes.

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace helpers {

inline constexpr std::int32_t kRecordAreaBytes = 0x20C00;
inline constexpr std::int32_t kSpareBytes = 2072;  // behind the area: room for the last record
inline constexpr std::int32_t kRecordRoomBytes = kRecordAreaBytes + kSpareBytes;
inline constexpr std::uint32_t kMaxMessageUnits = 2048;

// A record's header; the text follows, `length` code units without a terminator. Records lie packed
// at even offsets, so this is only ever copied bytewise.
struct RecordHeader {
    std::int64_t time;  // performance counter, in 100-nanosecond units
    std::uint32_t threadId;
    std::uint32_t padding;
    std::uint64_t length;  // in code units
};
static_assert(sizeof(RecordHeader) == 24);
static_assert(offsetof(RecordHeader, threadId) == 8 && offsetof(RecordHeader, padding) == 12);
static_assert(offsetof(RecordHeader, length) == 16);

struct BufferLayout {
    std::byte records[kRecordRoomBytes];
    std::int32_t used;           // bytes reserved; may run past the area's end while writers race
    std::uint32_t threadFilter;  // 0 lets every thread's records pass
};
static_assert(offsetof(BufferLayout, used) == 136'216);
static_assert(offsetof(BufferLayout, threadFilter) == 136'220);
static_assert(sizeof(BufferLayout) == 136'224);

struct TracerLayout {
    std::byte stopEvent[8];
    std::byte thread[8];  // null when the tracer is disabled
    std::uint32_t levelMask;
    std::uint8_t logToOutput;
    std::uint8_t running;
    BufferLayout buffers[2];
    std::uint32_t current;  // the buffer that writers fill
    std::uint8_t closed;
    std::uint8_t switching;  // in what was padding: a thread is changing `current`
};

struct BlockLayout {
    std::uint32_t references;
    TracerLayout tracer;
};
static_assert(offsetof(BlockLayout, tracer) == 4);
static_assert(offsetof(BlockLayout, tracer.stopEvent) == 4);
static_assert(offsetof(BlockLayout, tracer.thread) == 12);
static_assert(offsetof(BlockLayout, tracer.levelMask) == 20);
static_assert(offsetof(BlockLayout, tracer.logToOutput) == 24);
static_assert(offsetof(BlockLayout, tracer.running) == 25);
static_assert(offsetof(BlockLayout, tracer.buffers) == 28);
static_assert(offsetof(BlockLayout, tracer.buffers[1]) == 136'252);
static_assert(offsetof(BlockLayout, tracer.current) == 272'476);
static_assert(offsetof(BlockLayout, tracer.closed) == 272'480);
static_assert(offsetof(BlockLayout, tracer.switching) == 272'481);
static_assert(sizeof(BlockLayout) == 272'484);

static_assert(std::atomic_ref<std::uint8_t>::is_always_lock_free);
static_assert(std::atomic_ref<std::uint16_t>::is_always_lock_free);
static_assert(std::atomic_ref<std::uint32_t>::is_always_lock_free);

}  // namespace helpers
