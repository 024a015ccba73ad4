// An effect through its interface: forwarding, and the second log line of the typed forms.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fx/TestEffects.h"
#include "helpers/report/CapturedOutput.h"

namespace {

using base_types::IPropertySet;
using captured::TakeTraced;
using testing::ElementsAre;
using testing::IsEmpty;

std::wstring First(const std::wstring& operation, const std::wstring& code,
                   const std::wstring& property) {
    return L"Operation \"base_types::PropertySet::" + operation + L"\" returned error <" + code +
           L">, property: \"" + property + L"\"";
}

std::wstring Second(const std::wstring& operation, const std::wstring& code) {
    return L"Operation \"PropertySet::" + operation + L"\" returned error <" + code + L">";
}

class PropertyEffect : public testing::Test {
protected:
    PropertyEffect() { TakeTraced(); }

    template <class T>
    void ExpectTwoLines(const std::wstring& form) {
        T value{};
        EXPECT_EQ(effect.GetProperty(L"None", value), base_types::ePropertyNotFound);
        EXPECT_THAT(TakeTraced(),
                    ElementsAre(First(L"GetProperty", L"ePropertyNotFound", L"None"),
                                Second(L"GetProperty<" + form + L">", L"ePropertyNotFound")));
        EXPECT_EQ(effect.SetProperty(L"None", value), base_types::ePropertyNotFound);
        EXPECT_THAT(TakeTraced(),
                    ElementsAre(First(L"SetProperty", L"ePropertyNotFound", L"None"),
                                Second(L"SetProperty<" + form + L">", L"ePropertyNotFound")));
    }

    test::FormsEffect object;
    fx::IBaseFX& effect = object;
};

TEST_F(PropertyEffect, FailedTypedCallsLeaveTwoLines) {
    ExpectTwoLines<std::int32_t>(L"int");
    ExpectTwoLines<float>(L"float");
    ExpectTwoLines<bool>(L"bool");
    ExpectTwoLines<std::int64_t>(L"__int64");
    ExpectTwoLines<std::wstring>(L"std::wstring");
}

TEST_F(PropertyEffect, WriteOnlyPropertyIsRefusedWithTwoLinesAndStillDescribed) {
    std::int32_t value = 5;
    EXPECT_EQ(effect.GetProperty(L"Hidden", value), base_types::ePropertyNoAccessForReading);
    EXPECT_EQ(value, 5);
    EXPECT_THAT(TakeTraced(),
                ElementsAre(First(L"GetProperty", L"ePropertyNoAccessForReading", L"Hidden"),
                            Second(L"GetProperty<int>", L"ePropertyNoAccessForReading")));
    base_types::PropertyInfo info{};
    EXPECT_EQ(effect.GetPropertyInfo(L"Hidden", &info), base_types::eSuccess);
    EXPECT_EQ(info.access, 2u);
    EXPECT_EQ(effect.GetPropertyRange(L"Hidden", &value, &value),
              base_types::ePropertyMinMaxNotSpecified);
    EXPECT_EQ(effect.GetPropertyDefault(L"Hidden", &value), base_types::eSuccess);
    EXPECT_EQ(value, 1);
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

TEST_F(PropertyEffect, ReadOnlyPropertyIsNotWrittenThroughTheInterface) {
    EXPECT_EQ(effect.SetProperty(L"Fixed", 9), base_types::ePropertyNoAccessForWriting);
    EXPECT_EQ(object.fixed, 2);
    EXPECT_THAT(TakeTraced(),
                ElementsAre(First(L"SetProperty", L"ePropertyNoAccessForWriting", L"Fixed"),
                            Second(L"SetProperty<int>", L"ePropertyNoAccessForWriting")));
}

TEST_F(PropertyEffect, WrongFormLeavesTwoLinesWithoutTheProperty) {
    float value = 0;
    EXPECT_EQ(effect.GetProperty(L"Int", value), base_types::ePointerCastFailure);
    EXPECT_THAT(TakeTraced(), ElementsAre(L"Operation \"base_types::PropertySet::GetProperty\" "
                                          L"returned error <ePointerCastFailure>",
                                          Second(L"GetProperty<float>", L"ePointerCastFailure")));
}

TEST_F(PropertyEffect, OtherOperationsLeaveAtMostTheSetsOwnLine) {
    std::int32_t value = 0;
    base_types::PropertyInfo info;
    EXPECT_EQ(effect.GetProperty(L"None", &value, 4, &value), base_types::ePropertyNotFound);
    EXPECT_THAT(TakeTraced(), ElementsAre(First(L"GetProperty", L"ePropertyNotFound", L"None")));
    EXPECT_EQ(effect.SetProperty(L"None", &value, 4), base_types::ePropertyNotFound);
    EXPECT_THAT(TakeTraced(), ElementsAre(First(L"SetProperty", L"ePropertyNotFound", L"None")));
    EXPECT_EQ(effect.GetPropertyInfo(L"None", &info), base_types::ePropertyNotFound);
    EXPECT_THAT(TakeTraced(),
                ElementsAre(First(L"GetPropertyInfo", L"ePropertyNotFound", L"None")));
    EXPECT_EQ(effect.GetPropertyRange(L"None", &value, &value), base_types::ePropertyNotFound);
    EXPECT_EQ(effect.GetPropertyDefault(L"None", &value), base_types::ePropertyNotFound);
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

// The set's raw set is a virtual operation of its own: it is the effect's.
TEST_F(PropertyEffect, RawSetThroughTheSetReachesTheEffect) {
    base_types::PropertySet& set = object;
    const std::int32_t value = 8;
    EXPECT_EQ(set.SetProperty(L"Int", &value, 4), base_types::eSuccess);
    EXPECT_EQ(object.integer, 8);
}

TEST_F(PropertyEffect, CopiesFromAnotherEffect) {
    auto source = std::make_shared<test::FormsEffect>();
    source->integer = -7;
    source->text = L"copied";
    EXPECT_EQ(effect.CopyPropertiesFrom(source), base_types::eSuccess);
    EXPECT_EQ(object.integer, -7);
    EXPECT_EQ(object.text, L"copied");
}

TEST_F(PropertyEffect, CopyOntoItselfAndFromNothing) {
    auto self = std::make_shared<test::FormsEffect>();
    EXPECT_EQ(self->CopyPropertiesFrom(self), base_types::eSuccess);
    EXPECT_EQ(self->CopyPropertiesFrom(nullptr), base_types::eNotImplemented);
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

TEST_F(PropertyEffect, ValidityIsTheFlag) {
    EXPECT_TRUE(effect.IsValid());
    object.SetValid(false);
    EXPECT_FALSE(effect.IsValid());
    base_types::IValidator& validator = effect;
    EXPECT_FALSE(validator.IsValid());
}

TEST_F(PropertyEffect, DescriptorIsTheEffectsOwn) {
    const fx::EffectDescriptor* descriptor = effect.GetDescriptor();
    EXPECT_EQ(descriptor->flags, 0x84u);
    EXPECT_EQ(descriptor->inputs, 3u);
    EXPECT_EQ(descriptor->id, L"Forms\\Test");
    EXPECT_EQ(effect.GetDescriptor(), descriptor);
}

// The class adds nothing to its bases, and they stand in the order of their declaration.
TEST_F(PropertyEffect, LayoutIsThatOfItsThreeBases) {
    class Bases : public fx::IBaseFX,
                  public base_types::PropertySet,
                  public base_types::Validator {};
    static_assert(sizeof(Bases) == sizeof(fx::PropertyEffect));
    const auto address = [](auto* part) { return reinterpret_cast<std::uintptr_t>(part); };
    fx::PropertyEffect* whole = &object;
    EXPECT_EQ(address(static_cast<fx::IBaseFX*>(whole)), address(whole));
    EXPECT_EQ(address(static_cast<IPropertySet*>(whole)), address(whole));
    EXPECT_EQ(address(static_cast<base_types::IValidator*>(whole)), address(whole) + 8);
    EXPECT_EQ(address(static_cast<base_types::PropertySet*>(whole)), address(whole) + 16);
    EXPECT_GT(address(static_cast<base_types::Validator*>(whole)),
              address(static_cast<base_types::PropertySet*>(whole)));
}

}  // namespace
