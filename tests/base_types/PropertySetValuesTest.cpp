// Values that go in and out, and what the log says when they do not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "base_types/TestProperties.h"

namespace {

using namespace test;
using namespace base_types;
using captured::TakeTraced;
using testing::ElementsAre;
using testing::IsEmpty;

class PropertySetValues : public testing::Test {
protected:
    PropertySetValues() { TakeTraced(); }

    template <class T>
    void ExpectRoundTrip(const std::wstring& name, T first, T second) {
        Add(set, name, first);
        T value{};
        EXPECT_EQ(set.GetProperty(name, value), eSuccess);
        EXPECT_EQ(value, first);
        EXPECT_EQ(set.SetProperty(name, second), eSuccess);
        EXPECT_EQ(set.GetProperty(name, value), eSuccess);
        EXPECT_EQ(value, second);
    }

    PropertySet set;
};

TEST_F(PropertySetValues, EveryTypedFormGoesInAndOut) {
    ExpectRoundTrip<std::int32_t>(L"Int", -1, std::numeric_limits<std::int32_t>::min());
    ExpectRoundTrip<float>(L"Float", 0.5f, -1e30f);
    ExpectRoundTrip<bool>(L"Bool", true, false);
    ExpectRoundTrip<std::int64_t>(L"Int64", 1LL << 40, std::numeric_limits<std::int64_t>::min());
    ExpectRoundTrip<std::wstring>(L"String", L"", std::wstring(100000, L'\u6f22'));
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

TEST_F(PropertySetValues, StringReadIntoItselfStaysWhole) {
    std::wstring text = std::wstring(1000, L'x');
    set.AddProperty(L"Text", std::make_unique<TypedProperty<std::wstring>>(&text));
    EXPECT_EQ(set.GetProperty(L"Text", text), eSuccess);
    EXPECT_EQ(text, std::wstring(1000, L'x'));
}

TEST_F(PropertySetValues, UnknownNameIsReportedWithTheName) {
    std::wstring value = L"kept";
    std::int32_t copied = -5;
    PropertyInfo info{};
    EXPECT_EQ(set.GetProperty(L"Typed", value), ePropertyNotFound);
    EXPECT_EQ(set.SetProperty(L"Set", value), ePropertyNotFound);
    EXPECT_EQ(set.GetProperty(L"Raw", &info, 4, &copied), ePropertyNotFound);
    EXPECT_EQ(set.SetProperty(L"RawSet", &info, 4), ePropertyNotFound);
    EXPECT_EQ(set.GetPropertyInfo(L"Info", &info), ePropertyNotFound);
    EXPECT_EQ(value, L"kept");
    EXPECT_EQ(copied, -5);
    EXPECT_THAT(TakeTraced(),
                ElementsAre(NamedLine(L"GetProperty", L"ePropertyNotFound", L"Typed"),
                            NamedLine(L"SetProperty", L"ePropertyNotFound", L"Set"),
                            NamedLine(L"GetProperty", L"ePropertyNotFound", L"Raw"),
                            NamedLine(L"SetProperty", L"ePropertyNotFound", L"RawSet"),
                            NamedLine(L"GetPropertyInfo", L"ePropertyNotFound", L"Info")));
}

TEST_F(PropertySetValues, WriteOnlyPropertyIsNotRead) {
    Add(set, L"Hidden", 7, eAccessWrite);
    std::int32_t value = 1;
    std::int32_t copied = -5;
    EXPECT_EQ(set.GetProperty(L"Hidden", value), ePropertyNoAccessForReading);
    EXPECT_EQ(set.GetProperty(L"Hidden", &value, 4, &copied), ePropertyNoAccessForReading);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(copied, -5);
    EXPECT_THAT(TakeTraced(),
                ElementsAre(NamedLine(L"GetProperty", L"ePropertyNoAccessForReading", L"Hidden"),
                            NamedLine(L"GetProperty", L"ePropertyNoAccessForReading", L"Hidden")));
    EXPECT_EQ(set.SetProperty(L"Hidden", 8), eSuccess);
    EXPECT_EQ(set.GetProperty(L"Hidden", value, true), eSuccess);
    EXPECT_EQ(value, 8);
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

TEST_F(PropertySetValues, ReadOnlyPropertyIsNotWritten) {
    Add(set, L"Fixed", 7, eAccessRead);
    std::int32_t value = 1;
    EXPECT_EQ(set.SetProperty(L"Fixed", value), ePropertyNoAccessForWriting);
    EXPECT_EQ(set.SetProperty(L"Fixed", &value, 4), ePropertyNoAccessForWriting);
    EXPECT_THAT(TakeTraced(),
                ElementsAre(NamedLine(L"SetProperty", L"ePropertyNoAccessForWriting", L"Fixed"),
                            NamedLine(L"SetProperty", L"ePropertyNoAccessForWriting", L"Fixed")));
    EXPECT_EQ(set.GetProperty(L"Fixed", value), eSuccess);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(set.SetProperty(L"Fixed", 8, true), eSuccess);
    EXPECT_EQ(set.GetProperty(L"Fixed", value), eSuccess);
    EXPECT_EQ(value, 8);
}

TEST_F(PropertySetValues, FurtherAccessBitsGiveNoRight) {
    Add(set, L"Odd", 7, ~std::uint32_t{eAccessRead | eAccessWrite});
    std::int32_t value = 1;
    EXPECT_EQ(set.GetProperty(L"Odd", value), ePropertyNoAccessForReading);
    EXPECT_EQ(set.SetProperty(L"Odd", value), ePropertyNoAccessForWriting);
}

TEST_F(PropertySetValues, InfoRangeAndDefaultAskForNoAccessRight) {
    PropertyOptions<std::int32_t> options;
    options.access = 0;
    options.extra = 0xDEADBEEF;
    options.range = {-3, 9};
    options.defaultValue = 4;
    set.AddProperty(L"Shut", std::make_unique<TypedProperty<std::int32_t>>(options));
    PropertyInfo info{};
    EXPECT_EQ(set.GetPropertyInfo(L"Shut", &info), eSuccess);
    EXPECT_EQ(info.size, 4);
    EXPECT_EQ(info.extra, 0xDEADBEEF);
    EXPECT_EQ(info.access, 0u);
    EXPECT_EQ(info.type, ePropertyInt);
    std::int32_t min = 0;
    std::int32_t max = 0;
    EXPECT_EQ(set.GetPropertyRange(L"Shut", &min, &max), eSuccess);
    EXPECT_EQ(min, -3);
    EXPECT_EQ(max, 9);
    EXPECT_EQ(set.GetPropertyDefault(L"Shut", &min), eSuccess);
    EXPECT_EQ(min, 4);
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

template <class T>
void ExpectRange(PropertySet& set, T low, T high) {
    PropertyOptions<T> options;
    options.range = {low, high};
    set.AddProperty(L"Ranged", std::make_unique<TypedProperty<T>>(options));
    T min{};
    T max{};
    EXPECT_EQ(set.GetPropertyRange(L"Ranged", &min, &max), eSuccess);
    EXPECT_EQ(min, low);
    EXPECT_EQ(max, high);
    set.Clear();
}

TEST_F(PropertySetValues, RangesOfTheThreeNumbers) {
    ExpectRange<std::int32_t>(set, -1, 1);
    ExpectRange<float>(set, -0.5f, 0.5f);
    ExpectRange<std::int64_t>(set, -(1LL << 40), 1LL << 40);
}

template <class T>
void ExpectDefault(PropertySet& set, T value) {
    PropertyOptions<T> options;
    options.defaultValue = value;
    set.AddProperty(L"Preset", std::make_unique<TypedProperty<T>>(options));
    T out{};
    EXPECT_EQ(set.GetPropertyDefault(L"Preset", &out), eSuccess);
    EXPECT_EQ(out, value);
    set.Clear();
}

TEST_F(PropertySetValues, DefaultsOfTheFiveForms) {
    ExpectDefault<std::int32_t>(set, 12);
    ExpectDefault<float>(set, 1.5f);
    ExpectDefault<bool>(set, true);
    ExpectDefault<std::int64_t>(set, 1LL << 40);
    ExpectDefault<std::wstring>(set, L"a default that is long enough for the heap");
}

TEST_F(PropertySetValues, MissingRangeAndDefaultAreNotLogged) {
    Add(set, L"Bare", 1);
    std::int32_t min = 5;
    std::int32_t max = 6;
    EXPECT_EQ(set.GetPropertyRange(L"Bare", &min, &max), ePropertyMinMaxNotSpecified);
    EXPECT_EQ(set.GetPropertyDefault(L"Bare", &min), ePropertyDefaultValNotSpecified);
    EXPECT_EQ(set.GetPropertyRange(L"None", &min, &max), ePropertyNotFound);
    EXPECT_EQ(set.GetPropertyDefault(L"None", &min), ePropertyNotFound);
    EXPECT_EQ(min, 5);
    EXPECT_EQ(max, 6);
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

TEST_F(PropertySetValues, RawGetWithSmallBufferCopiesOnlyTheBuffer) {
    Add<std::int64_t>(set, L"Wide", 0x1122334455667788);
    unsigned char buffer[8] = {9, 9, 9, 9, 9, 9, 9, 9};
    std::int32_t copied = 0;
    EXPECT_EQ(set.GetProperty(L"Wide", buffer, 3, &copied), eSuccess);
    EXPECT_EQ(copied, 3);
    EXPECT_THAT(buffer, ElementsAre(0x88, 0x77, 0x66, 9, 9, 9, 9, 9));
    EXPECT_EQ(set.GetProperty(L"Wide", buffer, 0, &copied), eSuccess);
    EXPECT_EQ(copied, 0);
    unsigned char large[64] = {};
    EXPECT_EQ(set.GetProperty(L"Wide", large, 64, &copied), eSuccess);
    EXPECT_EQ(copied, 8);
}

TEST_F(PropertySetValues, RawSetWithLargeSizeCopiesOnlyTheProperty) {
    struct {
        std::int32_t value = 1;
        std::int32_t behind = 2;
    } effect;
    set.AddProperty(L"Int", std::make_unique<TypedProperty<std::int32_t>>(&effect.value));
    const unsigned char data[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(set.SetProperty(L"Int", data, 8), eSuccess);
    EXPECT_EQ(effect.value, 0x04030201);
    EXPECT_EQ(effect.behind, 2);
    effect.value = 0;
    EXPECT_EQ(set.SetProperty(L"Int", data, 2), eSuccess);
    EXPECT_EQ(effect.value, 0x0201);
}

TEST_F(PropertySetValues, RawCallsWithNegativeSizesCopyNothing) {
    Add(set, L"Int", 5);
    std::int32_t buffer = 3;
    std::int32_t copied = -1;
    for (const std::int32_t size : {-1, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(set.GetProperty(L"Int", &buffer, size, &copied), eSuccess);
        EXPECT_EQ(copied, 0);
        EXPECT_EQ(buffer, 3);
        EXPECT_EQ(set.SetProperty(L"Int", &buffer, size), eSuccess);
    }
    EXPECT_EQ(set.GetProperty(L"Int", buffer), eSuccess);
    EXPECT_EQ(buffer, 5);
}

TEST_F(PropertySetValues, RawPropertyIsReachedByRawCallsAlone) {
    set.AddProperty(L"Block", std::make_unique<RawProperty>(5));
    EXPECT_EQ(set.SetProperty(L"Block", "abcdefgh", 8), eSuccess);
    char buffer[8] = {};
    std::int32_t copied = 0;
    EXPECT_EQ(set.GetProperty(L"Block", buffer, 8, &copied), eSuccess);
    EXPECT_EQ(copied, 5);
    EXPECT_EQ(std::string(buffer), "abcde");
    PropertyInfo info{};
    EXPECT_EQ(set.GetPropertyInfo(L"Block", &info), eSuccess);
    EXPECT_EQ(info.type, ePropertyRaw);
    EXPECT_EQ(info.size, 5);
    std::int32_t number = 1;
    EXPECT_EQ(set.GetProperty(L"Block", number), ePointerCastFailure);
    EXPECT_EQ(number, 1);
}

// It has no storage, which was taken for a property that lost it.
TEST_F(PropertySetValues, RawPropertyOfNoBytesMovesNone) {
    set.AddProperty(L"Nothing", std::make_unique<RawProperty>(0));
    char byte = 'x';
    std::int32_t copied = -1;
    EXPECT_EQ(set.GetProperty(L"Nothing", &byte, 1, &copied), eSuccess);
    EXPECT_EQ(copied, 0);
    EXPECT_EQ(set.SetProperty(L"Nothing", static_cast<const void*>(&byte), 1), eSuccess);
    EXPECT_EQ(byte, 'x');
    EXPECT_TRUE(captured::TakeTraced().empty());
}

TEST_F(PropertySetValues, BoolLeftOddByRawBytesReadsAsTrue) {
    Add(set, L"Switch", false);
    const unsigned char odd = 0x40;
    EXPECT_EQ(set.SetProperty(L"Switch", &odd, 1), eSuccess);
    bool value = false;
    EXPECT_EQ(set.GetProperty(L"Switch", value), eSuccess);
    EXPECT_TRUE(value);
}

}  // namespace
