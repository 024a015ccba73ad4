#pragma once

// Faults of allocations, round by round, with what is left of each round counted.

#include "helpers/report/CapturedOutput.h"
#include "tarnex/AllocationFault.h"

namespace test_support {

// What the report of the calls keeps; forgotten before memory is counted.
inline void ForgetReports() {
    captured::TakeTraced();
    captured::TakeDebugged();
}

// As ForEachAllocation, and nothing of a round stays.
template <class Round>
void ForEachWithoutLeak(Round round) {
    ForEachAllocation([&](int nth, bool lasts) {
        ForgetReports();
        const std::int64_t live = LiveAllocations();
        const bool happened = round(nth, lasts);
        ForgetReports();
        EXPECT_EQ(LiveAllocations(), live) << "leaked";
        return happened;
    });
}

}  // namespace test_support
