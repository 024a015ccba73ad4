#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base_types/TestProperties.h"

namespace {

using namespace test;
using namespace base_types;
using testing::ElementsAre;
using testing::IsEmpty;

class PropertySetCopy : public testing::Test {
protected:
    PropertySetCopy() { captured::TakeTraced(); }

    std::int32_t IntOf(PropertySet& from, const std::wstring& name) {
        std::int32_t value = -99;
        EXPECT_EQ(from.GetProperty(name, value), eSuccess);
        return value;
    }

    std::shared_ptr<PropertySet> source = std::make_shared<PropertySet>();
    PropertySet target;
};

TEST_F(PropertySetCopy, CopiesAllFiveForms) {
    for (PropertySet* set : {source.get(), &target}) {
        const bool isSource = set == source.get();
        Add<std::int32_t>(*set, L"Int", isSource ? 1 : 0);
        Add<float>(*set, L"Float", isSource ? 1.5f : 0);
        Add<bool>(*set, L"Bool", isSource);
        Add<std::int64_t>(*set, L"Int64", isSource ? 1LL << 40 : 0);
        Add<std::wstring>(*set, L"String", isSource ? L"text" : L"");
    }
    ASSERT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    float number = 0;
    bool flag = false;
    std::int64_t wide = 0;
    std::wstring text;
    EXPECT_EQ(IntOf(target, L"Int"), 1);
    target.GetProperty(L"Float", number);
    target.GetProperty(L"Bool", flag);
    target.GetProperty(L"Int64", wide);
    target.GetProperty(L"String", text);
    EXPECT_EQ(number, 1.5f);
    EXPECT_TRUE(flag);
    EXPECT_EQ(wide, 1LL << 40);
    EXPECT_EQ(text, L"text");
}

TEST_F(PropertySetCopy, SourceThatTheCopyPutsIntoOrderStillFindsItsNames) {
    for (const wchar_t* name : {L"m", L"n"}) Add(*source, name, static_cast<int>(name[0]));
    for (const wchar_t* name : {L"m", L"n", L"m"}) IntOf(*source, name);
    for (const wchar_t* name : {L"a", L"n", L"m"}) Add(*source, name, 0);
    ASSERT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    for (const wchar_t* name : {L"n", L"m", L"n"}) {
        EXPECT_EQ(IntOf(*source, name), static_cast<int>(name[0]));
    }
    EXPECT_EQ(IntOf(*source, L"a"), 0);
}

TEST_F(PropertySetCopy, OrderOfAdditionDoesNotMatter) {
    for (const wchar_t* name : {L"c", L"a", L"b"}) Add(*source, name, static_cast<int>(name[0]));
    for (const wchar_t* name : {L"b", L"c", L"a"}) Add(target, name, 0);
    ASSERT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    for (const wchar_t* name : {L"a", L"b", L"c"}) {
        EXPECT_EQ(IntOf(target, name), static_cast<int>(name[0]));
    }
    // Both sets stand in name order now.
    EXPECT_THAT(NamesOf(*source), ElementsAre(L"a", L"b", L"c"));
    EXPECT_THAT(NamesOf(target), ElementsAre(L"a", L"b", L"c"));
}

TEST_F(PropertySetCopy, NamesAreNotCompared) {
    Add(*source, L"x", 1);
    Add(*source, L"y", 2);
    Add(target, L"p", 0);
    Add(target, L"q", 0);
    ASSERT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    EXPECT_EQ(IntOf(target, L"p"), 1);
    EXPECT_EQ(IntOf(target, L"q"), 2);
}

TEST_F(PropertySetCopy, AccessRightsAreNotAsked) {
    Add(*source, L"x", 1, eAccessWrite);
    Add(target, L"x", 0, eAccessRead);
    ASSERT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    EXPECT_EQ(IntOf(target, L"x"), 1);
}

TEST_F(PropertySetCopy, EndsAtTheShorterSet) {
    Add(*source, L"a", 1);
    Add(*source, L"b", 2);
    Add(target, L"a", 0);
    EXPECT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    EXPECT_EQ(IntOf(target, L"a"), 1);
    Add(target, L"b", 0);
    Add(target, L"c", 7);
    EXPECT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    EXPECT_EQ(IntOf(target, L"b"), 2);
    EXPECT_EQ(IntOf(target, L"c"), 7);
    source->Clear();
    EXPECT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    target.Clear();
    EXPECT_EQ(target.CopyPropertiesFrom(source), eSuccess);
}

TEST_F(PropertySetCopy, PairsOfDifferentTypesAndPairsOfNoFormAreSkipped) {
    Add<std::int32_t>(*source, L"a", 1);
    Add<std::wstring>(target, L"a", L"kept");
    const int block = 0x01020304;
    for (PropertySet* set : {source.get(), &target}) {
        set->AddProperty(L"b", std::make_unique<RawProperty>(4));
    }
    source->SetProperty(L"b", &block, 4);
    Add(*source, L"c", 3);
    Add(target, L"c", 0);
    EXPECT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    std::wstring text;
    EXPECT_EQ(target.GetProperty(L"a", text), eSuccess);
    EXPECT_EQ(text, L"kept");
    int copied = 0;
    int bytes = -1;
    EXPECT_EQ(target.GetProperty(L"b", &bytes, 4, &copied), eSuccess);
    EXPECT_EQ(bytes, 0);
    EXPECT_EQ(IntOf(target, L"c"), 3);
}

TEST_F(PropertySetCopy, EntriesWithoutObjectOrStorageAreSkipped) {
    source->AddProperty(L"a", nullptr);
    Add(target, L"a", 1);
    Add(*source, L"b", 5);
    target.AddProperty(L"b", nullptr);
    source->AddProperty(L"c", std::make_unique<HollowProperty>(ePropertyInt));
    Add(target, L"c", 3);
    EXPECT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    EXPECT_EQ(IntOf(target, L"a"), 1);
    EXPECT_EQ(IntOf(target, L"c"), 3);
}

TEST_F(PropertySetCopy, ASetCopiedOntoItselfStaysAsItIs) {
    Add(*source, L"b", 2);
    Add(*source, L"a", 1);
    EXPECT_EQ(source->CopyPropertiesFrom(source), eSuccess);
    EXPECT_EQ(IntOf(*source, L"a"), 1);
    EXPECT_EQ(IntOf(*source, L"b"), 2);
}

TEST_F(PropertySetCopy, NullSourceIsNotImplemented) {
    EXPECT_EQ(target.CopyPropertiesFrom(nullptr), eNotImplemented);
    EXPECT_THAT(captured::TakeTraced(), IsEmpty());
}

TEST_F(PropertySetCopy, ThrowingPropertyEndsTheCopyWithItsCodeAndNothingIsChanged) {
    Add(*source, L"a", 1);
    Add(target, L"a", 0);
    Add(*source, L"a text", std::wstring(L"new"));
    Add(target, L"a text", std::wstring(L"old"));
    source->AddProperty(L"b", std::make_unique<ActingProperty>(
                                  ePropertyInt, [] { throw Exception(eInvalidObject); }));
    Add(target, L"b", 0);
    EXPECT_EQ(target.CopyPropertiesFrom(source), eInvalidObject);
    EXPECT_EQ(IntOf(target, L"a"), 0);
    EXPECT_EQ(IntOf(target, L"b"), 0);
    std::wstring text;
    target.GetProperty(L"a text", text);
    EXPECT_EQ(text, L"old");
    source->Clear();
    source->AddProperty(L"a", std::make_unique<ActingProperty>(ePropertyInt, [] { throw 7; }));
    EXPECT_EQ(target.CopyPropertiesFrom(source), eNonInterfaceException);
    EXPECT_THAT(captured::TakeTraced(), IsEmpty());
}

}  // namespace
