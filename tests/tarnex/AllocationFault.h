#pragma once

// Makes an allocation of this program fail, and counts what all of them ask for. One thread.

#include <cstddef>

namespace test_support {

// What the failing allocation throws.
enum class Fault { kBadAlloc, kManagerException, kEffectException, kEngineException };

// While the object lives the `countdown`-th allocation from now on fails (1 is the next), and only
// that one.
class AllocationFault {
public:
    AllocationFault(Fault fault, int countdown);
    ~AllocationFault();
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;

    bool Happened() const;
};

// Every number of bytes asked for until now, added up; what was freed is not subtracted.
std::size_t RequestedBytes();

}  // namespace test_support
