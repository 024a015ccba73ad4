// Which property a name finds, and the order in which names are listed.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "base_types/TestProperties.h"

namespace {

using namespace test;
using namespace base_types;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(PropertySet, EmptySetFindsNothingAndListsNothing) {
    PropertySet set;
    std::int32_t value = 5;
    std::vector<std::wstring> names = {L"stale"};
    EXPECT_EQ(set.GetProperties(names), eSuccess);
    EXPECT_THAT(names, IsEmpty());
    EXPECT_EQ(set.GetProperty(L"", value), ePropertyNotFound);
    EXPECT_EQ(set.GetProperty(L"Gain", value), ePropertyNotFound);
    EXPECT_EQ(set.SetProperty(L"Gain", value), ePropertyNotFound);
    EXPECT_EQ(value, 5);
}

TEST(PropertySet, NamesDifferByCase) {
    PropertySet set;
    Add(set, L"gain", 1);
    Add(set, L"Gain", 2);
    std::int32_t value = 0;
    EXPECT_EQ(set.GetProperty(L"gain", value), eSuccess);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(set.GetProperty(L"Gain", value), eSuccess);
    EXPECT_EQ(value, 2);
    EXPECT_EQ(set.GetProperty(L"GAIN", value), ePropertyNotFound);
}

TEST(PropertySet, ListsInOrderOfAdditionUntilALookupSorts) {
    PropertySet set;
    for (const wchar_t* name : {L"a", L"B", L"Z", L"Abc", L"Ab"}) Add(set, name, 0);
    EXPECT_THAT(NamesOf(set), ElementsAre(L"a", L"B", L"Z", L"Abc", L"Ab"));
    std::int32_t value = 0;
    set.GetProperty(L"missing", value);
    EXPECT_THAT(NamesOf(set), ElementsAre(L"Ab", L"Abc", L"B", L"Z", L"a"));
}

TEST(PropertySet, ListsNamesAddedSinceTheLastLookupAtTheEnd) {
    PropertySet set;
    Add(set, L"m", 0);
    Add(set, L"c", 0);
    PropertyInfo info;
    ASSERT_EQ(set.GetPropertyInfo(L"m", &info), eSuccess);
    Add(set, L"z", 0);
    Add(set, L"a", 0);
    Add(set, L"n", 0);
    EXPECT_THAT(NamesOf(set), ElementsAre(L"c", L"m", L"z", L"a", L"n"));
    EXPECT_THAT(NamesOf(set), ElementsAre(L"c", L"m", L"z", L"a", L"n"));
    ASSERT_EQ(set.GetPropertyInfo(L"m", &info), eSuccess);
    EXPECT_THAT(NamesOf(set), ElementsAre(L"a", L"c", L"m", L"n", L"z"));
}

TEST(PropertySet, OfEqualNamesTheOneAddedFirstIsFound) {
    PropertySet set;
    Add(set, L"Twice", 1);
    Add(set, L"Twice", 2);
    Add(set, L"After", 9);
    std::int32_t value = 0;
    EXPECT_EQ(set.GetProperty(L"Twice", value), eSuccess);
    EXPECT_EQ(value, 1);
    Add(set, L"Twice", 3);
    Add(set, L"Before", 9);
    EXPECT_EQ(set.GetProperty(L"Twice", value), eSuccess);
    EXPECT_EQ(value, 1);
    EXPECT_THAT(NamesOf(set), ElementsAre(L"After", L"Before", L"Twice", L"Twice", L"Twice"));
    // From either side of the last hit.
    EXPECT_EQ(set.GetProperty(L"After", value), eSuccess);
    EXPECT_EQ(set.GetProperty(L"Twice", value), eSuccess);
    EXPECT_EQ(value, 1);
}

TEST(PropertySet, RepeatedAndAlternatingLookupsFindTheirOwn) {
    PropertySet set;
    for (int i = 0; i < 9; ++i) Add(set, std::wstring(1, static_cast<wchar_t>(L'a' + i)), i);
    std::int32_t value = -1;
    for (int from = 0; from < 9; ++from) {
        for (int to = 0; to < 9; ++to) {
            ASSERT_EQ(set.GetProperty(std::wstring(1, static_cast<wchar_t>(L'a' + from)), value),
                      eSuccess);
            ASSERT_EQ(set.GetProperty(std::wstring(1, static_cast<wchar_t>(L'a' + to)), value),
                      eSuccess);
            ASSERT_EQ(value, to);
            ASSERT_EQ(set.GetProperty(std::wstring(1, static_cast<wchar_t>(L'A' + to)), value),
                      ePropertyNotFound);
        }
    }
    captured::TakeTraced();
}

// Additions and lookups in random order answer as a plain map of first additions does.
TEST(PropertySet, AgreesWithAMapOfFirstAdditions) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 50; ++round) {
        PropertySet set;
        std::map<std::wstring, std::int32_t> model;
        for (int step = 0; step < 300; ++step) {
            std::wstring name = round % 2 == 0 ? L"" : L"a beginning that all share ";
            if (random() % 60 == 0) {
                set.Clear();
                model.clear();
            }
            for (unsigned length = random() % 4; length > 0; --length) {
                name += static_cast<wchar_t>(L'a' + random() % 3);
            }
            if (random() % 3 == 0) {
                Add(set, name, step);
                model.emplace(name, step);
                continue;
            }
            std::int32_t value = -1;
            const _eError code = set.GetProperty(name, value);
            const auto expected = model.find(name);
            ASSERT_EQ(code, expected == model.end() ? ePropertyNotFound : eSuccess);
            ASSERT_EQ(value, expected == model.end() ? -1 : expected->second);
        }
    }
    captured::TakeTraced();
}

TEST(PropertySet, HoldsAHundredThousandNames) {
    constexpr int kCount = 100000;
    PropertySet set;
    for (int i = 0; i < kCount; ++i) Add(set, L"Property" + std::to_wstring(i * 7919 % kCount), i);
    std::int32_t value = -1;
    for (int i = 0; i < kCount; ++i) {
        ASSERT_EQ(set.GetProperty(L"Property" + std::to_wstring(i * 7919 % kCount), value),
                  eSuccess);
        ASSERT_EQ(value, i);
    }
    EXPECT_EQ(NamesOf(set).size(), std::size_t{kCount});
}

TEST(PropertySet, EmptyLongAndOddNamesAreNamesLikeAnyOther) {
    PropertySet set;
    const std::wstring longName(40000, L'x');
    const std::wstring withZero(L"a\0b", 3);
    Add(set, longName, 1);
    Add(set, L"", 2);
    Add(set, withZero, 3);
    Add(set, L"a", 4);
    std::int32_t value = 0;
    EXPECT_EQ(set.GetProperty(longName, value), eSuccess);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(set.GetProperty(L"", value), eSuccess);
    EXPECT_EQ(value, 2);
    EXPECT_EQ(set.GetProperty(withZero, value), eSuccess);
    EXPECT_EQ(value, 3);
    EXPECT_EQ(set.GetProperty(L"a", value), eSuccess);
    EXPECT_EQ(value, 4);
}

TEST(PropertySet, DeletesItsPropertiesWhenClearedAndDestroyed) {
    int alive = 0;
    {
        PropertySet set;
        for (const wchar_t* name : {L"b", L"a", L"a"}) {
            set.AddProperty(name, std::make_unique<CountedProperty>(alive));
        }
        std::int32_t value = 0;
        EXPECT_EQ(set.GetProperty(L"a", value), eSuccess);
        EXPECT_EQ(alive, 3);
        set.Clear();
        EXPECT_EQ(alive, 0);
        EXPECT_EQ(set.GetProperty(L"a", value), ePropertyNotFound);
        set.AddProperty(L"c", std::make_unique<CountedProperty>(alive));
        EXPECT_EQ(set.GetProperty(L"c", value), eSuccess);
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
    captured::TakeTraced();
}

}  // namespace
