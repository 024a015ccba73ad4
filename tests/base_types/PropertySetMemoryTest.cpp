// The set when memory runs out: the n-th allocation of the thread fails.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "base_types/TestProperties.h"

namespace {

constexpr int kNever = -1;
thread_local int failingAllocation = kNever;  // how many succeed before the one that fails
thread_local bool failing = false;            // every allocation fails
thread_local int allocationsMade = 0;

void* Allocate(std::size_t size) {
    ++allocationsMade;
    if (failing) return nullptr;
    if (failingAllocation != kNever && failingAllocation-- == 0) return nullptr;
    return std::malloc(size == 0 ? 1 : size);
}

struct NoMemory {
    NoMemory() { failing = true; }
    ~NoMemory() { failing = false; }
};

}  // namespace

void* operator new(std::size_t size) {
    void* memory = Allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
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

namespace {

using namespace test;
using namespace base_types;
using testing::ElementsAre;

TEST(PropertySetMemory, ListWithoutMemoryIsAGenericExceptionAndLeavesTheNames) {
    PropertySet set;
    Add(set, L"Gain", 1);
    int failures = 0;
    for (;; ++failures) {
        std::vector<std::wstring> names = {L"kept"};
        captured::TakeDebugged();
        captured::TakeTraced();
        failingAllocation = failures;
        const _eError code = set.GetProperties(names);
        const bool failed = std::exchange(failingAllocation, kNever) == kNever;
        if (!failed) break;
        EXPECT_EQ(code, eGenericException);
        EXPECT_THAT(names, ElementsAre(L"kept"));
        EXPECT_THAT(captured::TakeDebugged(),
                    ElementsAre("Exception catched: (...) file: PropertySet, line: (92) name: "
                                "base_types::PropertySet::GetProperties\n"));
        EXPECT_THAT(captured::TakeTraced(),
                    ElementsAre(L"Operation returned error <eGenericException>"));
    }
    EXPECT_GT(failures, 0);
}

// A report that finds no memory either is lost; the code is not.
TEST(PropertySetMemory, FailureWithoutAnyMemoryStillGivesItsCode) {
    PropertySet set;
    const std::wstring name = L"A name that is long enough for the heap";
    std::int32_t value = 0;
    _eError code = eSuccess;
    {
        NoMemory none;
        code = set.GetProperty(name, value);
    }
    EXPECT_EQ(code, ePropertyNotFound);
    captured::TakeTraced();
}

// A lookup sorts without memory too.
TEST(PropertySetMemory, LookupNeedsNoMemory) {
    PropertySet set;
    for (int i = 0; i < 100; ++i) Add(set, std::to_wstring(i * 37 % 100), i);
    const std::wstring name = L"37";
    std::int32_t value = -1;
    {
        NoMemory none;
        EXPECT_EQ(set.GetProperty(name, value), eSuccess);
    }
    EXPECT_EQ(value, 1);
    for (int i = 100; i < 200; ++i) Add(set, std::to_wstring(i * 37 % 100), i);
    {
        NoMemory none;
        EXPECT_EQ(set.GetProperty(name, value), eSuccess);
    }
    EXPECT_EQ(value, 1);
}

TEST(PropertySetMemory, RepeatedAccessAllocatesNothing) {
    PropertySet set;
    for (const wchar_t* name : {L"A", L"B", L"C"}) Add(set, name, 1);
    const std::wstring name = L"B";
    std::int32_t value = 0;
    std::int32_t copied = 0;
    set.GetProperty(name, value);
    const int before = allocationsMade;
    for (int i = 0; i < 10; ++i) {
        set.SetProperty(name, i);
        set.GetProperty(name, value);
        set.GetProperty(name, &value, 4, &copied);
        set.SetProperty(name, &value, 4);
    }
    EXPECT_EQ(allocationsMade, before);
}

TEST(PropertySetMemory, AdditionWithoutMemoryAddsNothing) {
    PropertySet set;
    Add(set, L"Gain", 1);
    auto property = std::make_unique<TypedProperty<std::int32_t>>();
    std::wstring name = L"Next";
    bool thrown = false;
    {
        NoMemory none;
        try {
            set.AddProperty(std::move(name), std::move(property));
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
    }
    EXPECT_TRUE(thrown);
    EXPECT_THAT(NamesOf(set), ElementsAre(L"Gain"));
    std::int32_t value = 0;
    EXPECT_EQ(set.GetProperty(L"Gain", value), eSuccess);
}

}  // namespace
