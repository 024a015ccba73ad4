#pragma once

// Empties the tracer's buffers into a log. One thread at a time: the writer thread, or who takes
// over from it when it died, at whatever instruction that was. Nothing is then doubled, torn or
// lost: before bytes go out, what goes where and which record comes next is noted, and every note
// can be followed twice.

#include <atomic>
#include <string_view>

#include "helpers/tracer/Tracer.h"
#include "helpers/tracer/service/LineFormatter.h"
#include "helpers/tracer/service/LogSink.h"

namespace helpers {

class LogWriter {
public:
    LogWriter(Tracer tracer, LogSink& sink) : tracer_(tracer), sink_(sink) {}

    // The log's first line, before anything else. May be called again if it was interrupted.
    void WriteFirstLine(std::string_view line);

    // One wake-up. Writes the buffer that is not current, and goes on as long as the one it may
    // take is full; if there was nothing to write, closes the current one when it holds data.
    void DrainOnce();

    // Writes whatever both buffers hold.
    void Finish();

    // Finish, by another thread after this one's died. Waits for no record: nobody finishes it.
    void TakeOver();

    // How long an unfinished record, or a switch of buffers, is waited for; after that its thread
    // counts as dead.
    static constexpr int kPatienceMs = 1000;

private:
    // Writes the buffer that is not current; false when it is empty.
    bool WriteOther();
    void WriteOut(std::uint32_t index);
    std::int32_t WriteRecord(const TraceBuffer& buffer, std::int32_t offset, std::int32_t end);
    bool AwaitRecord(const Record& record) const;
    void AddLine(const Record& record);
    void Commit(std::int32_t next);
    void FollowNote();
    void FreeDeadSwitch();

    Tracer tracer_;
    LogSink& sink_;
    int patienceMs_ = kPatienceMs;
    std::int64_t switchSeen_ = 0;  // since when a switch has been under way; 0: none
    std::int64_t now_ = 0;         // the moment of the write-out
    std::uint64_t position_ = 0;
    std::size_t chunkBytes_ = 0;

    // The notes. -1 in walking_: no buffer is being written out.
    std::atomic<std::int32_t> walking_{-1};
    std::atomic<std::int32_t> next_{0};  // the first record that is not in the log yet
    std::atomic<bool> resetting_{false};
    std::atomic<std::size_t> notedBytes_{0};  // 0: no note
    std::atomic<std::uint64_t> notedPosition_{0};
    std::atomic<std::int32_t> notedNext_{0};

    static constexpr std::size_t kChunkBytes = 1 << 16;
    char chunk_[kChunkBytes];
};

}  // namespace helpers
