#pragma once

// Makes allocations of this program fail, for one thread or for all others, and counts them for
// each thread by itself.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

namespace test_support {

// What the failing allocation throws.
enum class Fault { kBadAlloc, kManagerException, kEffectException, kEngineException };

// While the object lives the `countdown`-th allocation from now on fails (1 is the next): only that
// one, or, when the fault lasts, every one after it, too.
class AllocationFault {
public:
    AllocationFault(Fault fault, int countdown, bool lasts = false);
    ~AllocationFault();
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;

    bool Happened() const;
};

// The same, with std::bad_alloc, for all threads but the one that makes it, and their allocations
// counted together. One at a time.
class OtherThreadsFault {
public:
    explicit OtherThreadsFault(int countdown, bool lasts = false);
    ~OtherThreadsFault();
    OtherThreadsFault(const OtherThreadsFault&) = delete;
    OtherThreadsFault& operator=(const OtherThreadsFault&) = delete;

    bool Happened() const;
};

// Every number of bytes asked for until now, added up; what was freed is not subtracted.
std::size_t RequestedBytes();

// How many allocations there were until now, and how many of them nobody has freed.
std::size_t AllocationsMade();
std::int64_t LiveAllocations();

// Calls `round(nth, lasts)`, which lets that allocation fail and answers whether it came to it: the
// first, the second and so on until it does not; then again with faults that last.
template <class Round>
void ForEachAllocation(Round round) {
    constexpr int kMostAllocations = 20'000;
    for (const bool lasts : {false, true}) {
        int nth = 1;
        for (; nth < kMostAllocations && round(nth, lasts); ++nth) {
            ASSERT_FALSE(testing::Test::HasFailure())
                << "allocation " << nth << (lasts ? " and all behind it" : "");
        }
        ASSERT_FALSE(testing::Test::HasFailure()) << "without a fault";
        EXPECT_GT(nth, 1) << "it allocates nothing";
        EXPECT_LT(nth, kMostAllocations) << "it never came through";
    }
}

}  // namespace test_support
