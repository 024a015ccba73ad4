// The set when memory runs out: the n-th allocation fails, or that one and all behind it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "base_types/TestProperties.h"
#include "tarnex/AllocationFault.h"

namespace {

using namespace test;
using namespace base_types;
using test_support::AllocationFault;
using test_support::AllocationsMade;
using test_support::Fault;
using test_support::ForEachAllocation;
using test_support::LiveAllocations;
using testing::ElementsAre;

// Every allocation fails.
struct NoMemory {
    AllocationFault fault{Fault::kBadAlloc, 1, true};
};

TEST(PropertySetMemory, ListWithoutMemoryIsAGenericExceptionAndLeavesTheNames) {
    PropertySet set;
    Add(set, L"Gain", 1);
    ForEachAllocation([&](int nth, bool lasts) {
        std::vector<std::wstring> names = {L"kept"};
        captured::TakeDebugged();
        captured::TakeTraced();
        _eError code;
        {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            code = set.GetProperties(names);
            if (!fault.Happened()) return false;
        }
        EXPECT_EQ(code, eGenericException);
        EXPECT_THAT(names, ElementsAre(L"kept"));
        return true;
    });
    std::vector<std::wstring> names;
    {
        const AllocationFault fault(Fault::kBadAlloc, 1);
        set.GetProperties(names);
    }
    ExpectUnlocked(set);
    EXPECT_THAT(captured::TakeDebugged(),
                ElementsAre("Exception catched: (...) file: PropertySet, line: (92) name: "
                            "base_types::PropertySet::GetProperties\n"));
    EXPECT_THAT(captured::TakeTraced(),
                ElementsAre(L"Operation returned error <eGenericException>"));
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
    const std::size_t before = AllocationsMade();
    for (int i = 0; i < 10; ++i) {
        set.SetProperty(name, i);
        set.GetProperty(name, value);
        set.GetProperty(name, &value, 4, &copied);
        set.SetProperty(name, &value, 4);
    }
    EXPECT_EQ(AllocationsMade(), before);
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

// --- Every operation, every allocation -----------------------------------------------------------

const std::wstring kLong = L"a text that is long enough for the heap";
const std::wstring kLonger = kLong + kLong;
// Made beforehand: a name takes memory, too.
const std::wstring kNumber = L"Number of a property with a long name";
const std::wstring kText = L"Text of a property with a long name";
const std::wstring kNextText = L"Next text of a property with a long name";
const std::wstring kHidden = L"Hidden property with a long name";
const std::wstring kFixed = L"Fixed property with a long name";
const std::wstring kDefault = L"Default of a property with a long name";
const std::wstring kNothing;
const std::wstring kMissing = L"a name that is none";

// Everything that can be seen of a set.
struct Contents {
    std::vector<std::wstring> names;
    std::int32_t integer = 0;
    std::wstring first;
    std::wstring second;
    std::wstring hidden;
    friend bool operator==(const Contents&, const Contents&) = default;
};

// Fresh, so that operations also sort it. Names are long, as texts are.
class Subject {
public:
    Subject() {
        Add(set, kNumber, 1);
        Add(set, kText, kLong);
        Add(set, kNextText, kLong);
        Add(set, kHidden, kLong, eAccessWrite);
        Add(set, kFixed, kLong, eAccessRead);
        set.AddProperty(kDefault, std::make_unique<TypedProperty<std::wstring>>(
                                      PropertyOptions<std::wstring>{.defaultValue = kLong}));
    }
    Contents Look() {
        Contents contents;
        contents.names = NamesOf(set);
        std::sort(contents.names.begin(), contents.names.end());
        set.GetProperty(kNumber, contents.integer);
        set.GetProperty(kText, contents.first);
        set.GetProperty(kNextText, contents.second);
        set.GetProperty(kHidden, contents.hidden, true);
        return contents;
    }
    PropertySet set;
};

using Operation = std::function<_eError(PropertySet&)>;

// Each fault gives the code of the operation without one, and then its effect, or that of a failure
// and no effect; nothing leaks, and the next call goes well.
void ExpectAllOrNothing(
    const char* name, _eError failure, const Operation& operation,
    const std::function<void()>& release = [] {}) {
    SCOPED_TRACE(name);
    Subject whole;
    const Contents before = whole.Look();
    const _eError expected = operation(whole.set);
    const Contents after = whole.Look();
    const auto round = [&](int nth, bool lasts) {
        captured::TakeTraced();
        captured::TakeDebugged();
        release();
        const std::int64_t live = LiveAllocations();
        bool happened = true;
        {
            Subject subject;
            _eError code;
            {
                const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
                code = operation(subject.set);
                happened = fault.Happened();
            }
            captured::TakeTraced();
            captured::TakeDebugged();
            if (!happened || code == expected) {
                EXPECT_EQ(code, expected);
                EXPECT_TRUE(subject.Look() == after);
            } else {
                EXPECT_EQ(code, failure);
                EXPECT_TRUE(subject.Look() == before) << "changed by a failed call";
                EXPECT_EQ(operation(subject.set), expected) << "the next call";
                EXPECT_TRUE(subject.Look() == after);
            }
            captured::TakeTraced();
        }
        release();
        EXPECT_EQ(LiveAllocations(), live) << "leaked";
        return happened;
    };
    ForEachAllocation(round);
}

TEST(PropertySetMemory, GetsAreAllOrNothing) {
    std::wstring text;
    std::int32_t number = 0;
    PropertyInfo info{};
    const auto check = [&](const char* name, const Operation& operation) {
        ExpectAllOrNothing(
            name, eNonInterfaceException,
            [&](PropertySet& set) {
                std::wstring().swap(text);
                const _eError code = operation(set);
                // No expectation where memory may have run out for it.
                return text == (code == eSuccess ? kLong : kNothing) ? code : eInvalidObject;
            },
            [&] { std::wstring().swap(text); });
    };
    check("text", [&](PropertySet& set) { return set.GetProperty(kText, text); });
    check("default", [&](PropertySet& set) { return set.GetPropertyDefault(kDefault, &text); });
    check("forced", [&](PropertySet& set) { return set.GetProperty(kHidden, text, true); });
    check("hidden", [&](PropertySet& set) { return set.GetProperty(kHidden, text); });
    check("missing", [&](PropertySet& set) { return set.GetProperty(kMissing, number); });
    check("missing raw", [&](PropertySet& set) {
        return set.GetProperty(kMissing, &number, sizeof number, &number);
    });
    check("missing info", [&](PropertySet& set) { return set.GetPropertyInfo(kMissing, &info); });
    check("cast", [&](PropertySet& set) { return set.GetProperty(kText, number); });
}

TEST(PropertySetMemory, SetsAreAllOrNothing) {
    const auto check = [](const char* name, const Operation& operation) {
        ExpectAllOrNothing(name, eNonInterfaceException, operation);
    };
    check("text", [](PropertySet& set) { return set.SetProperty(kText, kLonger); });
    check("fixed", [](PropertySet& set) { return set.SetProperty(kFixed, kLonger); });
    check("missing", [](PropertySet& set) { return set.SetProperty(kMissing, kLonger); });
    check("cast", [](PropertySet& set) { return set.SetProperty(kNumber, kLonger); });
    check("raw text", [](PropertySet& set) { return set.SetProperty(kText, "bytes", 5); });
    check("raw missing", [](PropertySet& set) { return set.SetProperty(kMissing, "bytes", 5); });
}

TEST(PropertySetMemory, CopiesAreAllOrNothing) {
    const auto source = std::make_shared<PropertySet>();
    for (const wchar_t* name : {L"a", L"b", L"c", L"d", L"e", L"f"}) {
        Add(*source, name, kLonger);
    }
    ExpectAllOrNothing("copy", eNonInterfaceException,
                       [&](PropertySet& set) { return set.CopyPropertiesFrom(source); });
}

}  // namespace
