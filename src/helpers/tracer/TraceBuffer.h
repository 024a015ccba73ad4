#pragma once

// One of the two buffers: any thread appends without a lock, the log's own thread empties it.

#include "helpers/tracer/BlockLayout.h"
#include "helpers/tracer/Record.h"

namespace helpers {

class TraceBuffer {
public:
    explicit TraceBuffer(BufferLayout& layout) : layout_(layout) {}

    // Copies a record of `units` (1 to kMaxMessageUnits) code units in; false when it is full.
    bool Append(const char16_t* text, std::uint32_t units);

    // Bytes reserved, and never more than the area. What they hold may be unfinished.
    std::int32_t Used() const;
    bool IsFull() const { return Used() == kRecordAreaBytes; }
    bool IsEmpty() const { return Used() == 0; }

    Record At(std::int32_t offset) const { return Record(layout_.records + offset); }
    bool Passes(std::uint32_t threadId) const;

    // The log's own thread. Reserves all that is left as one filler, so that writers turn to the
    // other buffer.
    void Close();
    // Zeroes the records in [begin, end).
    void Clear(std::int32_t begin, std::int32_t end);
    // Opens the cleared buffer for writers again; false, and nothing done, when more than the
    // `walked` bytes were reserved meanwhile.
    bool Reset(std::int32_t walked);
    // Back to nothing, whatever it holds; nobody may be writing.
    void Initialize();

private:
    std::atomic_ref<std::int32_t> UsedWord() const {
        return std::atomic_ref<std::int32_t>(layout_.used);
    }

    BufferLayout& layout_;
};

}  // namespace helpers
