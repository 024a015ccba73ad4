#include "tarnex/AllocationFault.h"

#include <cstdlib>
#include <new>

#include "tarnex/Errors.h"
#include "vorel/Exception.h"

namespace {

int remaining = 0;  // allocations until the fault; 0 for none
std::size_t requested = 0;
test_support::Fault kind;

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
    if (remaining > 0 && --remaining == 0) {
        Fail();
    }
    if (void* memory = std::malloc(size != 0 ? size : 1)) {
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
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

namespace test_support {

std::size_t RequestedBytes() {
    return requested;
}

AllocationFault::AllocationFault(Fault fault, int countdown) {
    kind = fault;
    remaining = countdown;
}

AllocationFault::~AllocationFault() {
    remaining = 0;
}

bool AllocationFault::Happened() const {
    return remaining == 0;
}

}  // namespace test_support
