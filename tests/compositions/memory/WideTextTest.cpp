// A text whose memory runs out is not made, and one that was to be replaced stays.

#include "compositions/WideText.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>

#include "compositions/UpperName.h"
#include "tarnex/AllocationFault.h"

namespace {

using compositions::AssignUpper;
using compositions::UpperName;
using compositions::UpperText;
using compositions::WideText;
using test_support::AllocationFault;
using test_support::Fault;
using test_support::ForEachAllocation;
using test_support::LiveAllocations;

const std::wstring kLong(100, L'a');

// Whether the fault kept `make` from its end.
template <class Make>
bool Fails(int nth, bool lasts, bool& happened, Make make) {
    try {
        const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
        make();
        happened = fault.Happened();
        return false;
    } catch (const std::bad_alloc&) {
        happened = true;
        return true;
    }
}

template <class Make>
void ExpectAllOrNothing(Make make) {
    int failures = 0;
    ForEachAllocation([&](int nth, bool lasts) {
        const std::int64_t live = LiveAllocations();
        bool happened = true;
        failures += Fails(nth, lasts, happened, make) ? 1 : 0;
        EXPECT_EQ(LiveAllocations(), live) << nth;
        return happened;
    });
    EXPECT_GT(failures, 0);
}

TEST(WideTextMemory, ATextThatCannotBeMadeLeavesNothing) {
    const WideText text(kLong);
    ExpectAllOrNothing([] { WideText::OfSize(100); });
    ExpectAllOrNothing([] { UpperText(kLong); });
    ExpectAllOrNothing([] { UpperName name(kLong); });
    ExpectAllOrNothing([&] { WideText copy(text); });
}

// A long text and a short one.
template <class Replace>
void ExpectToStayUnlessReplaced(Replace replace) {
    for (const std::size_t size : {70, 3}) {
        const std::wstring before(size, L'b');
        int failures = 0;
        ForEachAllocation([&](int nth, bool lasts) {
            WideText target(before);
            bool happened = true;
            const bool failed = Fails(nth, lasts, happened, [&] { replace(target); });
            EXPECT_EQ(target.size(), failed ? size : kLong.size());
            if (failed) {
                EXPECT_EQ(std::wstring(target), before);
            }
            failures += failed ? 1 : 0;
            return happened;
        });
        EXPECT_GT(failures, 0);
    }
}

TEST(WideTextMemory, ATextThatCannotBeReplacedStays) {
    const WideText text(kLong);
    ExpectToStayUnlessReplaced([&](WideText& target) { target = text; });
    ExpectToStayUnlessReplaced([](WideText& target) { target = std::wstring_view(kLong); });
    ExpectToStayUnlessReplaced([](WideText& target) { target.Renew(kLong.size()); });
    ExpectToStayUnlessReplaced([](WideText& target) { AssignUpper(kLong, target); });
}

TEST(WideTextMemory, ATextGivesItsMemoryBack) {
    const std::int64_t live = LiveAllocations();
    {
        WideText text(kLong);
        WideText other(std::wstring_view(kLong).substr(1));
        text = std::move(other);
        EXPECT_EQ(LiveAllocations(), live + 1);
        text = WideText(L"short");
        EXPECT_EQ(LiveAllocations(), live);
        text = WideText(kLong);
        text.CutTo(1);
        EXPECT_EQ(LiveAllocations(), live);
    }
    EXPECT_EQ(LiveAllocations(), live);
}

}  // namespace
