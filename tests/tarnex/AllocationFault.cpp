#include "tarnex/AllocationFault.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include "tarnex/Errors.h"
#include "vorel/Exception.h"

namespace {

thread_local int countdownLeft = 0;  // allocations until the fault; 0 for none
thread_local bool failing = false;   // every allocation is one
thread_local bool keepsFailing = false;
thread_local std::size_t requested = 0;
thread_local std::size_t made = 0;
thread_local std::int64_t live = 0;
thread_local test_support::Fault kind;

// The fault of the other threads. relaxed throughout: each thread's order is its own.
std::atomic<int> othersLeft{0};  // allocations until the fault; 0 for none
std::atomic<bool> othersFailed{false};
std::atomic<bool> othersKeepFailing{false};
thread_local bool spared = false;  // from the fault of the other threads

bool OthersFail() {
    if (spared) return false;
    if (othersFailed.load(std::memory_order_relaxed)) {
        return othersKeepFailing.load(std::memory_order_relaxed);
    }
    int left = othersLeft.load(std::memory_order_relaxed);
    while (left > 0 &&
           !othersLeft.compare_exchange_weak(left, left - 1, std::memory_order_relaxed)) {
    }
    if (left != 1) return false;
    othersFailed.store(true, std::memory_order_relaxed);
    return true;
}

// The library's code meets exceptions of the engine core only out of what it calls, and allocating
// is the one thing that all of it calls.
void Fail() {
    switch (kind) {
        case test_support::Fault::kManagerException:
            throw tarnex::Exception(tarnex::eGenericError);
        case test_support::Fault::kEffectException:
            throw fx::Exception(fx::eTimeout);
        case test_support::Fault::kEngineException:
            throw vorel::Exception();
        case test_support::Fault::kBadAlloc:
            throw std::bad_alloc();
    }
}

}  // namespace

void* operator new(std::size_t size) {
    requested += size;
    ++made;
    if (failing || (countdownLeft > 0 && --countdownLeft == 0)) {
        failing = keepsFailing;
        Fail();
    }
    if (OthersFail()) throw std::bad_alloc();
    if (void* memory = std::malloc(size != 0 ? size : 1)) {
        ++live;
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (...) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t& nothrow) noexcept {
    return operator new(size, nothrow);
}

void operator delete(void* memory) noexcept {
    if (memory == nullptr) return;
    --live;
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    operator delete(memory);
}

void operator delete[](void* memory) noexcept {
    operator delete(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    operator delete(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    operator delete(memory);
}

namespace test_support {

std::size_t RequestedBytes() {
    return requested;
}

std::size_t AllocationsMade() {
    return made;
}

std::int64_t LiveAllocations() {
    return live;
}

AllocationFault::AllocationFault(Fault fault, int countdown, bool lasts) {
    kind = fault;
    keepsFailing = lasts;
    countdownLeft = countdown;
}

AllocationFault::~AllocationFault() {
    countdownLeft = 0;
    failing = false;
}

bool AllocationFault::Happened() const {
    return countdownLeft == 0;
}

OtherThreadsFault::OtherThreadsFault(int countdown, bool lasts) {
    spared = true;
    othersKeepFailing.store(lasts, std::memory_order_relaxed);
    othersLeft.store(countdown, std::memory_order_relaxed);
}

OtherThreadsFault::~OtherThreadsFault() {
    othersLeft.store(0, std::memory_order_relaxed);
    othersFailed.store(false, std::memory_order_relaxed);
    spared = false;
}

bool OtherThreadsFault::Happened() const {
    return othersFailed.load(std::memory_order_relaxed);
}

}  // namespace test_support
