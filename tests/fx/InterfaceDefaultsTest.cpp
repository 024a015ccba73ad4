// What fx::IBaseFX answers for an effect that overrides nothing it need not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "fx/TestEffects.h"

namespace fx {
class IRenderTarget {};
class IRenderContext {};
}  // namespace fx

namespace {

class InterfaceDefaults : public testing::Test {
protected:
    test::FormsEffect object;
    fx::IBaseFX& effect = object;
};

TEST_F(InterfaceDefaults, OutPointersAreEmptied) {
    auto target = std::make_shared<fx::IRenderTarget>();
    const std::weak_ptr<fx::IRenderTarget> watched = target;
    std::shared_ptr<fx::IRenderTarget> other = target;
    EXPECT_EQ(effect.GetOutput(target), fx::eNotImplemented);
    EXPECT_EQ(target, nullptr);
    EXPECT_EQ(effect.GetPreview(other), fx::eNotImplemented);
    EXPECT_EQ(other, nullptr);
    EXPECT_TRUE(watched.expired());
    std::shared_ptr<fx::IBaseFX> clone = std::make_shared<test::FormsEffect>();
    EXPECT_EQ(effect.CloneEffect(clone), fx::eNotImplemented);
    EXPECT_EQ(clone, nullptr);
}

TEST_F(InterfaceDefaults, OperationsOfTheEngineAnswerNotImplemented) {
    EXPECT_EQ(std::uint32_t{fx::eNotImplemented}, 2u);
    effect.OnDeviceLost(nullptr);
    effect.OnDeviceReset(nullptr);
    EXPECT_EQ(effect.BeginRender(), fx::eNotImplemented);
    EXPECT_EQ(effect.EndRender(), fx::eNotImplemented);
    EXPECT_EQ(effect.Reset(), fx::eNotImplemented);
}

TEST_F(InterfaceDefaults, RenderCostThrows) {
    try {
        effect.GetRenderCost();
        FAIL() << "nothing was thrown";
    } catch (const std::exception& exception) {
        EXPECT_STREQ(exception.what(), "not implemented");
    }
}

template <class Set, class Value>
constexpr bool kTakes = requires(Set set, const Value& value) {
    set.SetProperty(L"Name", value);
};

// A pointer would become the bool `true`.
TEST_F(InterfaceDefaults, LiteralIsNoValueOfAProperty) {
    static_assert(!kTakes<fx::IBaseFX&, wchar_t[5]> && !kTakes<fx::IBaseFX&, char[5]>);
    static_assert(!kTakes<test::FormsEffect&, wchar_t[5]> && !kTakes<fx::IBaseFX&, int*>);
    static_assert(!kTakes<base_types::PropertySet&, wchar_t[5]>);
    static_assert(kTakes<fx::IBaseFX&, std::wstring> && kTakes<fx::IBaseFX&, bool>);
    static_assert(kTakes<fx::IBaseFX&, int> && kTakes<base_types::PropertySet&, float>);
    EXPECT_EQ(effect.SetProperty(L"String", std::wstring(L"text")), base_types::eSuccess);
    EXPECT_EQ(effect.SetProperty(L"Int", 0), base_types::eSuccess);
}

TEST_F(InterfaceDefaults, RawDefaultIsNotImplemented) {
    std::int32_t value = 5;
    EXPECT_EQ(effect.GetPropertyDefault(L"Int", static_cast<void*>(&value)),
              base_types::eNotImplemented);
    EXPECT_EQ(value, 5);
}

// An implementation that overrides only what is pure.
class Bare : public base_types::IPropertySet {
public:
    using Code = base_types::_eError;
    Code GetProperties(std::vector<std::wstring>&) override { return base_types::eSuccess; }
    Code GetPropertyInfo(const std::wstring&, base_types::PropertyInfo*) override { return no; }
    Code GetProperty(const std::wstring&, void*, std::int32_t, std::int32_t*) override {
        return no;
    }
    Code GetProperty(const std::wstring&, std::wstring&) override { return no; }
    Code GetProperty(const std::wstring&, std::int64_t&) override { return no; }
    Code GetProperty(const std::wstring&, bool&) override { return no; }
    Code GetProperty(const std::wstring&, float&) override { return no; }
    Code GetProperty(const std::wstring&, std::int32_t&) override { return no; }
    Code SetProperty(const std::wstring&, const void*, std::int32_t) override { return no; }
    Code SetProperty(const std::wstring&, const std::wstring&) override { return no; }
    Code SetProperty(const std::wstring&, std::int64_t) override { return no; }
    Code SetProperty(const std::wstring&, bool) override { return no; }
    Code SetProperty(const std::wstring&, float) override { return no; }
    Code SetProperty(const std::wstring&, std::int32_t) override { return no; }
    Code GetPropertyRange(const std::wstring&, std::int64_t*, std::int64_t*) override { return no; }
    Code GetPropertyRange(const std::wstring&, float*, float*) override { return no; }
    Code GetPropertyRange(const std::wstring&, std::int32_t*, std::int32_t*) override { return no; }

private:
    static constexpr Code no = base_types::ePropertyNotFound;
};

TEST_F(InterfaceDefaults, SetThatOverridesOnlyWhatItMustAnswersNotImplemented) {
    Bare bare;
    base_types::IPropertySet& set = bare;
    void* raw = nullptr;
    std::wstring* text = nullptr;
    std::int64_t* wide = nullptr;
    bool* flag = nullptr;
    float* number = nullptr;
    std::int32_t* integer = nullptr;
    EXPECT_EQ(std::uint32_t{base_types::eNotImplemented}, 11u);
    EXPECT_EQ(set.GetPropertyDefault(L"", raw), base_types::eNotImplemented);
    EXPECT_EQ(set.GetPropertyDefault(L"", text), base_types::eNotImplemented);
    EXPECT_EQ(set.GetPropertyDefault(L"", wide), base_types::eNotImplemented);
    EXPECT_EQ(set.GetPropertyDefault(L"", flag), base_types::eNotImplemented);
    EXPECT_EQ(set.GetPropertyDefault(L"", number), base_types::eNotImplemented);
    EXPECT_EQ(set.GetPropertyDefault(L"", integer), base_types::eNotImplemented);
    EXPECT_EQ(set.CopyPropertiesFrom(nullptr), base_types::eNotImplemented);
}

TEST_F(InterfaceDefaults, CopyFromASetOfAnotherMakeIsNotImplemented) {
    EXPECT_EQ(effect.CopyPropertiesFrom(std::make_shared<Bare>()), base_types::eNotImplemented);
}

}  // namespace
