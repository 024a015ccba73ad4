#pragma once

// Makes calls of this program, and of every library in it, to the system fail: this program's own
// open, read and so on stand before those of the C library. All threads.

#include <gtest/gtest.h>

namespace test_support {

enum class SystemCall {
    kOpen,  // of files, by descriptor or stream
    kLook,  // size, kind and times of a file
    kRead,
    kWrite,   // and what brings it to the disk
    kMove,    // renaming, removing and making folders
    kLock,    // of files
    kMemory,  // shared memory and mappings
    kEvent,
    kThread,
};

inline constexpr SystemCall kFileCalls[] = {SystemCall::kOpen, SystemCall::kLook, SystemCall::kRead,
                                            SystemCall::kWrite, SystemCall::kMove};

// What becomes of a call.
enum class Fate {
    kFails,      // with an error
    kShort,      // reads and writes half of what they should; other calls go well
    kBreaksOff,  // reads half of what it should, and the next call finds the file's end
    kEnds,       // reads find the file's end and writes a full disk; other calls go well
};

// While the object lives the `countdown`-th call of that kind meets its fate: only that one, or
// every one after it, too. One at a time.
class SystemFault {
public:
    SystemFault(SystemCall call, int countdown, bool lasts, Fate fate = Fate::kFails);
    ~SystemFault();
    SystemFault(const SystemFault&) = delete;
    SystemFault& operator=(const SystemFault&) = delete;

    bool Happened() const;
};

// Calls `round(nth, lasts)`, which lets that call meet its fate and answers whether it came to it:
// the first, the second and so on until it does not; then again with faults that last. Returns how
// many calls there were.
template <class Round>
int ForEachCall(Round round) {
    constexpr int kMostCalls = 5000;
    int calls = 0;
    for (const bool lasts : {false, true}) {
        int nth = 1;
        for (; nth < kMostCalls && round(nth, lasts); ++nth) {
            if (testing::Test::HasFailure()) {
                ADD_FAILURE() << "call " << nth << (lasts ? " and all behind it" : "");
                return calls;
            }
        }
        EXPECT_FALSE(testing::Test::HasFailure()) << "without a fault";
        EXPECT_LT(nth, kMostCalls) << "it never came through";
        calls = nth - 1;
    }
    return calls;
}

}  // namespace test_support
