#include "helpers/tracer/service/LogWriter.h"

#include <algorithm>

#include "platform/DebugOutput.h"
#include "platform/OutputFile.h"
#include "platform/Thread.h"

namespace helpers {
namespace {

// Stores in program order, for a reader who comes when this thread is dead: the system's killing of
// the thread orders the rest. release, and a fence that keeps the compiler from moving what
// follows.
template <typename Value>
void Note(std::atomic<Value>& note, Value value) {
    note.store(value, std::memory_order_release);
    std::atomic_signal_fence(std::memory_order_seq_cst);
}

// relaxed; own notes, or those of a dead thread.
template <typename Value>
Value Noted(const std::atomic<Value>& note) {
    return note.load(std::memory_order_relaxed);
}

// The first finished record behind a hole that a dead thread left; `end` if there is none.
std::int32_t FindFinished(const TraceBuffer& buffer, std::int32_t offset, std::int32_t end) {
    while (offset < end && !buffer.At(offset).LooksFinished()) offset += 2;
    return std::min(offset, end);
}

}  // namespace

void LogWriter::WriteFirstLine(std::string_view line) {
    position_ = 0;
    const std::size_t most = kChunkBytes / 4;
    chunkBytes_ = platform::ToTextMode(line.data(), std::min(line.size(), most), chunk_);
    Commit(0);
}

void LogWriter::DrainOnce() {
    FreeDeadSwitch();
    bool wrote = false;
    for (;;) {
        wrote = WriteOther() || wrote;
        const std::uint32_t current = tracer_.Current();
        if (tracer_.Buffer(current).IsFull()) tracer_.SwitchFrom(current);
        if (!tracer_.Buffer(1 - tracer_.Current()).IsFull()) break;
    }
    const std::uint32_t current = tracer_.Current();
    if (wrote || tracer_.Buffer(current).IsEmpty()) return;
    // Switching here, and not only by the next writer, brings the last lines before a quiet spell
    // into the log at the next wake-up.
    tracer_.Buffer(current).Close();
    tracer_.SwitchFrom(current);
}

void LogWriter::FreeDeadSwitch() {
    if (!tracer_.IsSwitching()) {
        switchSeen_ = 0;
        return;
    }
    const std::int64_t now = platform::CounterTime();
    if (switchSeen_ == 0) switchSeen_ = now;
    if (now - switchSeen_ < kPatienceMs * 10'000) return;
    tracer_.EndSwitching();
    switchSeen_ = 0;
}

bool LogWriter::WriteOther() {
    for (;;) {
        const std::uint32_t current = tracer_.Current();
        const bool empty = tracer_.Buffer(1 - current).IsEmpty();
        // A writer may have switched and filled it between the two looks; the older lines then lie
        // in the one it left.
        if (tracer_.Current() != current) continue;
        if (!empty) WriteOut(1 - current);
        return !empty;
    }
}

void LogWriter::Finish() {
    WriteOther();
    const std::uint32_t current = tracer_.Current();
    WriteOut(current);
    WriteOut(1 - current);  // what a late writer put there since
}

void LogWriter::TakeOver() {
    patienceMs_ = 0;
    FollowNote();
    chunkBytes_ = 0;
    if (const std::int32_t index = Noted(walking_); index >= 0) {
        // Cleared or not, reopened or not: from the start, over whatever is blank.
        if (Noted(resetting_)) Note(next_, 0);
        WriteOut(static_cast<std::uint32_t>(index));
    }
    Finish();
}

void LogWriter::WriteOut(std::uint32_t index) {
    TraceBuffer buffer = tracer_.Buffer(index);
    Note(walking_, static_cast<std::int32_t>(index));
    now_ = platform::CounterTime();
    std::int32_t cleared = 0;
    for (bool reset = false; !reset;) {
        const std::int32_t end = buffer.Used();
        std::int32_t next = Noted(next_);
        while (next < end) next = WriteRecord(buffer, next, end);
        Commit(next);
        // A full buffer's last record reaches into the room behind the area.
        const std::int32_t walked = std::min(next, kRecordRoomBytes);
        buffer.Clear(std::min(cleared, walked), walked);
        cleared = walked;
        Note(resetting_, true);
        reset = buffer.Reset(end);
        if (reset) Note(next_, 0);
        Note(resetting_, false);
    }
    Note(walking_, -1);
}

// Returns where the next record begins.
std::int32_t LogWriter::WriteRecord(const TraceBuffer& buffer, std::int32_t offset,
                                    std::int32_t end) {
    const Record record = buffer.At(offset);
    if (!AwaitRecord(record)) return FindFinished(buffer, offset + 2, end);
    const std::uint32_t units = record.Length();
    if (units > kMaxMessageUnits) return end;  // the filler that closed the buffer
    const std::int32_t next = offset + Record::Size(units);
    if (next > kRecordRoomBytes) return std::max(next, end);  // a filler: it did not fit
    if (!record.IsFiller() && buffer.Passes(record.ThreadId())) {
        AddLine(record);
        if (kChunkBytes - chunkBytes_ < 2 * kLineBufferBytes) Commit(next);
    }
    return next;
}

bool LogWriter::AwaitRecord(const Record& record) const {
    for (int waited = 0; record.Length() == 0; ++waited) {
        if (waited >= patienceMs_) return false;
        platform::SleepMs(1);
    }
    return true;
}

void LogWriter::AddLine(const Record& record) {
    LineBuffer line;
    const std::size_t length = FormatRecord(line, record, now_);
    chunkBytes_ += platform::ToTextMode(line, length, chunk_ + chunkBytes_);
    if (tracer_.LogsToOutput()) platform::DebugOutput(line);
}

// Brings the gathered lines into the log; from here on `next` is the first record that is not.
void LogWriter::Commit(std::int32_t next) {
    if (chunkBytes_ == 0) {
        Note(next_, next);
        return;
    }
    Note(notedNext_, next);
    Note(notedPosition_, position_);
    Note(notedBytes_, chunkBytes_);
    FollowNote();
    chunkBytes_ = 0;
}

void LogWriter::FollowNote() {
    const std::size_t bytes = Noted(notedBytes_);
    if (bytes == 0) return;
    const std::uint64_t position = Noted(notedPosition_);
    // What cannot be written is lost whole: the next lines take its place.
    const bool written = sink_.WriteAt(position, chunk_, bytes);
    position_ = position + (written ? bytes : 0);
    Note(next_, Noted(notedNext_));
    Note(notedBytes_, std::size_t{0});
}

}  // namespace helpers
