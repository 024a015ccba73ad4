// Wrong forms, null pointers, properties that throw: codes, lines, and a lock that is free after.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "base_types/PropertySetLock.h"
#include "base_types/TestProperties.h"

namespace {

using namespace test;
using namespace base_types;
using captured::TakeDebugged;
using captured::TakeTraced;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PropertySetFailures : public testing::Test {
protected:
    PropertySetFailures() {
        TakeTraced();
        TakeDebugged();
    }

    void AddActing(std::function<void()> action) {
        set.AddProperty(L"Acting", std::make_unique<ActingProperty>(ePropertyInt, action));
    }

    PropertySet set;
};

template <class T>
void ExpectOtherForm(PropertySet& set, const std::wstring& name) {
    T value{};
    const T before = value;
    EXPECT_EQ(set.GetProperty(name, value), ePointerCastFailure);
    EXPECT_EQ(set.GetProperty(name, value, true), ePointerCastFailure);
    EXPECT_EQ(value, before);
    EXPECT_EQ(set.SetProperty(name, value), ePointerCastFailure);
    EXPECT_EQ(set.SetProperty(name, value, true), ePointerCastFailure);
    const std::wstring get = PlainLine(L"GetProperty", L"ePointerCastFailure");
    const std::wstring put = PlainLine(L"SetProperty", L"ePointerCastFailure");
    EXPECT_THAT(TakeTraced(), ElementsAre(get, get, put, put));
    EXPECT_EQ(set.GetPropertyDefault(name, &value), ePointerCastFailure);
    if constexpr (!std::is_same_v<T, bool> && !std::is_same_v<T, std::wstring>) {
        EXPECT_EQ(set.GetPropertyRange(name, &value, &value), ePointerCastFailure);
    }
    EXPECT_EQ(value, before);
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

TEST_F(PropertySetFailures, AnotherFormThanThePropertysOwnIsACastFailure) {
    Add<std::int32_t>(set, L"Int", 5);
    Add<float>(set, L"Float", 5);
    Add<bool>(set, L"Bool", true);
    Add<std::int64_t>(set, L"Int64", 5);
    Add<std::wstring>(set, L"String", L"five");
    set.AddProperty(L"Raw", std::make_unique<RawProperty>(32));
    for (const wchar_t* name : {L"Float", L"Bool", L"Int64", L"String", L"Raw"}) {
        ExpectOtherForm<std::int32_t>(set, name);
    }
    for (const wchar_t* name : {L"Int", L"Bool", L"Int64", L"String", L"Raw"}) {
        ExpectOtherForm<float>(set, name);
    }
    for (const wchar_t* name : {L"Int", L"Float", L"Int64", L"String", L"Raw"}) {
        ExpectOtherForm<bool>(set, name);
    }
    for (const wchar_t* name : {L"Int", L"Float", L"Bool", L"String", L"Raw"}) {
        ExpectOtherForm<std::int64_t>(set, name);
    }
    for (const wchar_t* name : {L"Int", L"Float", L"Bool", L"Int64", L"Raw"}) {
        ExpectOtherForm<std::wstring>(set, name);
    }
    std::wstring text;
    EXPECT_EQ(set.GetProperty(L"String", text), eSuccess);
    EXPECT_EQ(text, L"five");
}

TEST_F(PropertySetFailures, UnknownTypeCodesHaveNoTypedForm) {
    for (const std::int32_t type : {-1, 0, 6, 1000}) {
        set.Clear();
        set.AddProperty(L"Acting", std::make_unique<ActingProperty>(type, [] {}));
        ExpectOtherForm<std::int32_t>(set, L"Acting");
        std::int32_t value = 3;
        std::int32_t copied = 0;
        EXPECT_EQ(set.SetProperty(L"Acting", &value, 4), eSuccess);
        EXPECT_EQ(set.GetProperty(L"Acting", &value, 4, &copied), eSuccess);
        EXPECT_EQ(value, 3);
    }
}

TEST_F(PropertySetFailures, RawCallsNeverTouchAStringObject) {
    Add<std::wstring>(set, L"Text", L"whole");
    unsigned char bytes[sizeof(std::wstring)] = {};
    std::int32_t copied = -1;
    EXPECT_EQ(set.GetProperty(L"Text", bytes, sizeof bytes, &copied), ePointerCastFailure);
    EXPECT_EQ(set.SetProperty(L"Text", bytes, sizeof bytes), ePointerCastFailure);
    EXPECT_EQ(copied, -1);
    EXPECT_THAT(bytes, Each(0));
    EXPECT_THAT(TakeTraced(), ElementsAre(PlainLine(L"GetProperty", L"ePointerCastFailure"),
                                          PlainLine(L"SetProperty", L"ePointerCastFailure")));
    std::wstring text;
    EXPECT_EQ(set.GetProperty(L"Text", text), eSuccess);
    EXPECT_EQ(text, L"whole");
    PropertyInfo info{};
    EXPECT_EQ(set.GetPropertyInfo(L"Text", &info), eSuccess);
    EXPECT_EQ(info.size, static_cast<std::int32_t>(sizeof(std::wstring)));
}

void ExpectNothingBehindTheName(PropertySet& set) {
    std::int32_t value = 5;
    std::int32_t copied = -1;
    EXPECT_EQ(set.GetProperty(L"Empty", &value, 4, &copied), ePointerCastFailure);
    EXPECT_EQ(set.SetProperty(L"Empty", &value, 4), ePointerCastFailure);
    EXPECT_EQ(set.GetProperty(L"Empty", value), ePointerCastFailure);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(copied, -1);
    EXPECT_THAT(TakeTraced(), ElementsAre(PlainLine(L"GetProperty", L"ePointerCastFailure"),
                                          PlainLine(L"SetProperty", L"ePointerCastFailure"),
                                          PlainLine(L"GetProperty", L"ePointerCastFailure")));
}

TEST_F(PropertySetFailures, EntryWithoutPropertyObjectIsACastFailure) {
    set.AddProperty(L"Empty", nullptr);
    ExpectNothingBehindTheName(set);
    std::int32_t value = 5;
    PropertyInfo info{-1, 2, 3, 4};
    EXPECT_EQ(set.SetProperty(L"Empty", 5), ePointerCastFailure);
    EXPECT_EQ(set.GetPropertyInfo(L"Empty", &info), ePointerCastFailure);
    EXPECT_EQ(info.size, -1);
    EXPECT_THAT(TakeTraced(), ElementsAre(PlainLine(L"SetProperty", L"ePointerCastFailure"),
                                          PlainLine(L"GetPropertyInfo", L"ePointerCastFailure")));
    EXPECT_EQ(set.GetPropertyRange(L"Empty", &value, &value), ePointerCastFailure);
    EXPECT_EQ(set.GetPropertyDefault(L"Empty", &value), ePointerCastFailure);
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

TEST_F(PropertySetFailures, PropertyWithoutStorageIsACastFailure) {
    set.AddProperty(L"Empty", std::make_unique<HollowProperty>(ePropertyInt));
    ExpectNothingBehindTheName(set);
}

TEST_F(PropertySetFailures, NullPointersAreCastFailures) {
    PropertyOptions<std::int32_t> options;
    options.defaultValue = 1;
    options.range = {0, 2};
    set.AddProperty(L"Int", std::make_unique<TypedProperty<std::int32_t>>(options));
    std::int32_t value = 5;
    std::int32_t copied = -1;
    EXPECT_EQ(set.GetProperty(L"Int", nullptr, 4, &copied), ePointerCastFailure);
    EXPECT_EQ(set.GetProperty(L"Int", &value, 4, nullptr), ePointerCastFailure);
    EXPECT_EQ(set.SetProperty(L"Int", nullptr, 4), ePointerCastFailure);
    EXPECT_EQ(set.GetPropertyInfo(L"Int", nullptr), ePointerCastFailure);
    EXPECT_THAT(TakeTraced(), ElementsAre(PlainLine(L"GetProperty", L"ePointerCastFailure"),
                                          PlainLine(L"GetProperty", L"ePointerCastFailure"),
                                          PlainLine(L"SetProperty", L"ePointerCastFailure"),
                                          PlainLine(L"GetPropertyInfo", L"ePointerCastFailure")));
    std::int32_t* const none = nullptr;
    EXPECT_EQ(set.GetPropertyRange(L"Int", none, &value), ePointerCastFailure);
    EXPECT_EQ(set.GetPropertyRange(L"Int", &value, none), ePointerCastFailure);
    EXPECT_EQ(set.GetPropertyDefault(L"Int", none), ePointerCastFailure);
    EXPECT_THAT(TakeTraced(), IsEmpty());
    EXPECT_EQ(value, 5);
    EXPECT_EQ(copied, -1);
    ExpectUnlocked(set);
}

struct Thrown {
    std::function<void()> action;
    _eError code;
    std::wstring name;
};

const std::vector<Thrown>& EverythingThrown() {
    static const std::vector<Thrown> all = {
        {[] { throw Exception(eErrorUpdatingFixedFilter); }, eErrorUpdatingFixedFilter,
         L"eErrorUpdatingFixedFilter"},
        // A code that is otherwise reported with the property's name: not here.
        {[] { throw Exception(ePropertyNotFound); }, ePropertyNotFound, L"ePropertyNotFound"},
        {[] { throw std::runtime_error("no"); }, eNonInterfaceException, L"eNonInterfaceException"},
        {[] { throw 7; }, eNonInterfaceException, L"eNonInterfaceException"},
    };
    return all;
}

TEST_F(PropertySetFailures, ThrowingGetAndSetAreReportedWithoutTheName) {
    for (const Thrown& thrown : EverythingThrown()) {
        set.Clear();
        AddActing(thrown.action);
        std::int32_t value = 5;
        std::int32_t copied = -1;
        EXPECT_EQ(set.GetProperty(L"Acting", value), thrown.code);
        EXPECT_EQ(set.GetProperty(L"Acting", &value, 4, &copied), thrown.code);
        EXPECT_EQ(set.SetProperty(L"Acting", value), thrown.code);
        EXPECT_EQ(set.SetProperty(L"Acting", &value, 4), thrown.code);
        EXPECT_EQ(value, 5);
        EXPECT_EQ(copied, -1);
        const std::wstring get = PlainLine(L"GetProperty", thrown.name);
        const std::wstring put = PlainLine(L"SetProperty", thrown.name);
        EXPECT_THAT(TakeTraced(), ElementsAre(get, get, put, put));
        EXPECT_THAT(TakeDebugged(), IsEmpty());
    }
}

TEST_F(PropertySetFailures, ThrowingRangeAndDefaultAreNotReported) {
    for (const Thrown& thrown : EverythingThrown()) {
        set.Clear();
        AddActing(thrown.action);
        std::int32_t min = 5;
        std::int32_t max = 6;
        EXPECT_EQ(set.GetPropertyRange(L"Acting", &min, &max), thrown.code);
        EXPECT_EQ(set.GetPropertyDefault(L"Acting", &min), thrown.code);
        EXPECT_EQ(min, 5);
        EXPECT_EQ(max, 6);
        EXPECT_THAT(TakeTraced(), IsEmpty());
        EXPECT_THAT(TakeDebugged(), IsEmpty());
    }
}

TEST_F(PropertySetFailures, NoFailureLeavesTheSetLocked) {
    Add(set, L"Hidden", 1, 0);
    set.AddProperty(L"Empty", nullptr);
    AddActing([] { throw 7; });
    const auto source = std::make_shared<PropertySet>();
    for (const wchar_t* name : {L"Hidden", L"Empty", L"Acting"}) Add(*source, name, 1);
    EXPECT_EQ(set.CopyPropertiesFrom(source), eNonInterfaceException);
    ExpectUnlocked(set);
    std::int32_t value = 0;
    std::int32_t copied = 0;
    PropertyInfo info;
    for (const wchar_t* name : {L"Hidden", L"Empty", L"Acting", L"Missing"}) {
        set.GetProperty(name, value);
        ExpectUnlocked(set);
        set.SetProperty(name, value);
        ExpectUnlocked(set);
        set.GetProperty(name, &value, 4, &copied);
        ExpectUnlocked(set);
        set.SetProperty(name, &value, 4);
        ExpectUnlocked(set);
        set.GetPropertyInfo(name, &info);
        ExpectUnlocked(set);
        set.GetPropertyRange(name, &value, &value);
        ExpectUnlocked(set);
        set.GetPropertyDefault(name, &value);
        ExpectUnlocked(set);
    }
}

PropertySet* tracedSet = nullptr;

// A slow log must not hold up other threads.
TEST_F(PropertySetFailures, LinesAreWrittenAfterTheLockIsReleased) {
    AddActing([] { throw 7; });
    Add(set, L"Hidden", 1, 0);
    tracedSet = &set;
    captured::OnTrace([] { ExpectUnlocked(*tracedSet); });
    std::int32_t value = 0;
    set.GetProperty(L"Missing", value);
    set.GetProperty(L"Hidden", value);
    set.SetProperty(L"Acting", value);
    set.GetPropertyInfo(L"Missing", nullptr);
    set.GetPropertyInfo(L"Hidden", nullptr);
    captured::OnTrace(nullptr);
    EXPECT_THAT(TakeTraced(), SizeIs(5));
}

TEST_F(PropertySetFailures, ListAndInfoSendTheirExceptionsToTheDebugger) {
    const auto fail = [](int line, const char* name, std::function<_eError()> body) {
        return RunWithDebuggerLine(name, line, body);
    };
    EXPECT_EQ(fail(92, "base_types::PropertySet::GetProperties",
                   []() -> _eError { throw Exception(eInvalidObject); }),
              eInvalidObject);
    EXPECT_EQ(fail(119, "base_types::PropertySet::GetPropertyInfo", []() -> _eError { throw 7; }),
              eGenericException);
    EXPECT_THAT(TakeDebugged(),
                ElementsAre("Exception catched: (9) file: PropertySet, line: (92) name: "
                            "base_types::PropertySet::GetProperties\n",
                            "Exception catched: (...) file: PropertySet, line: (119) name: "
                            "base_types::PropertySet::GetPropertyInfo\n"));
    EXPECT_THAT(TakeTraced(), ElementsAre(L"Operation returned error <eInvalidObject>",
                                          L"Operation returned error <eGenericException>"));
}

}  // namespace
