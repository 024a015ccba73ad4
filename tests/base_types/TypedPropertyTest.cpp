#include "sdk/TypedProperty.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace {

using namespace base_types;
using testing::ElementsAre;

template <class T>
class TypedProperties : public testing::Test {};
using Forms = testing::Types<std::int32_t, float, bool, std::int64_t, std::wstring>;
TYPED_TEST_SUITE(TypedProperties, Forms);

template <class T>
T Sample() {
    return T(1);
}
template <>
std::wstring Sample() {
    return L"sample";
}

TYPED_TEST(TypedProperties, InfoTellsSizeTypeAndAccess) {
    TypedProperty<TypeParam> property({.access = eAccessRead | eAccessExpensive, .extra = 17});
    EXPECT_EQ(property.Info().size, static_cast<std::int32_t>(sizeof(TypeParam)));
    EXPECT_EQ(property.Info().extra, 17u);
    EXPECT_EQ(property.Info().access, 5u);
    EXPECT_EQ(property.Info().type, kTypeOf<TypeParam>);
}

TYPED_TEST(TypedProperties, WithoutOptionsStartsEmptyReadableAndWritable) {
    TypedProperty<TypeParam> property;
    EXPECT_EQ(*static_cast<TypeParam*>(property.Value()), TypeParam());
    EXPECT_EQ(property.Info().access, 3u);
    TypeParam untouched = Sample<TypeParam>();
    EXPECT_FALSE(property.Range(&untouched, &untouched));
    EXPECT_FALSE(property.Default(&untouched));
    EXPECT_EQ(untouched, Sample<TypeParam>());
}

TYPED_TEST(TypedProperties, StartsWithItsDefault) {
    TypedProperty<TypeParam> property({.defaultValue = Sample<TypeParam>()});
    EXPECT_EQ(*static_cast<TypeParam*>(property.Value()), Sample<TypeParam>());
    const TypeParam other{};
    property.Assign(&other);
    EXPECT_EQ(*static_cast<TypeParam*>(property.Value()), other);
    TypeParam out{};
    EXPECT_TRUE(property.Default(&out));
    EXPECT_EQ(out, Sample<TypeParam>());
}

TYPED_TEST(TypedProperties, BoundPropertyIsTheMember) {
    TypeParam member{};
    TypedProperty<TypeParam> property(&member, {.defaultValue = Sample<TypeParam>()});
    EXPECT_EQ(property.Value(), &member);
    EXPECT_EQ(member, Sample<TypeParam>());
    TypeParam kept = Sample<TypeParam>();
    TypedProperty<TypeParam> withoutDefault(&kept);
    EXPECT_EQ(kept, Sample<TypeParam>());
    const TypeParam other{};
    withoutDefault.Assign(&other);
    EXPECT_EQ(kept, other);
}

TEST(TypedProperty, CodesOfTheFiveForms) {
    EXPECT_EQ(kTypeOf<std::int32_t>, 1);
    EXPECT_EQ(kTypeOf<float>, 2);
    EXPECT_EQ(kTypeOf<bool>, 3);
    EXPECT_EQ(kTypeOf<std::int64_t>, 4);
    EXPECT_EQ(kTypeOf<std::wstring>, 5);
    EXPECT_EQ(kTypeOf<double>, 0);
}

TEST(TypedProperty, RangeIsToldNotEnforced) {
    TypedProperty<std::int32_t> property({.range = std::pair(0, 10)});
    const std::int32_t beyond = 99;
    property.Assign(&beyond);
    EXPECT_EQ(*static_cast<std::int32_t*>(property.Value()), 99);
    std::int32_t min = -1;
    std::int32_t max = -1;
    EXPECT_TRUE(property.Range(&min, &max));
    EXPECT_EQ(min, 0);
    EXPECT_EQ(max, 10);
}

TEST(TypedProperty, BoolTakesAnyByteAsTrue) {
    TypedProperty<bool> property;
    const unsigned char odd = 2;
    property.Assign(&odd);
    EXPECT_EQ(*static_cast<unsigned char*>(property.Value()), 1);
}

TEST(RawProperty, HoldsItsBytes) {
    RawProperty property(3);
    property.Assign("xyz");
    EXPECT_EQ(std::string(static_cast<char*>(property.Value()), 3), "xyz");
    EXPECT_EQ(property.Info().type, 0);
    EXPECT_FALSE(property.Range(nullptr, nullptr));
    EXPECT_FALSE(property.Default(nullptr));
}

TEST(RawProperty, IsBoundToBytesOfTheEffect) {
    std::array<unsigned char, 4> bytes = {1, 2, 3, 4};
    RawProperty property(bytes.data(), 3, eAccessRead);
    EXPECT_EQ(property.Info().access, 1u);
    property.Assign("\7\7\7");
    EXPECT_THAT(bytes, ElementsAre(7, 7, 7, 4));
}

TEST(RawProperty, NegativeSizeHoldsNothing) {
    RawProperty property(-5);
    EXPECT_EQ(property.Info().size, 0);
    unsigned char byte = 7;
    RawProperty bound(&byte, -5);
    EXPECT_EQ(bound.Info().size, 0);
    bound.Assign("x");
    EXPECT_EQ(byte, 7);
}

}  // namespace
