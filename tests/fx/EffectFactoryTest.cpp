#include "sdk/EffectFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "fx/TestEffects.h"
#include "helpers/report/CapturedOutput.h"

namespace {

using captured::TakeTraced;
using testing::ElementsAre;
using testing::IsEmpty;

template <class Thrown>
class Failing : public test::FormsEffect {
public:
    Failing() { throw Thrown(fx::eEmptyEffect); }
};

struct Unknown {
    explicit Unknown(int) {}
};
struct Standard : std::runtime_error {
    explicit Standard(int) : runtime_error("no") {}
};
struct SuccessfulException : fx::Exception {
    explicit SuccessfulException(int) : Exception(fx::eSuccess) {}
};

class EffectFactory : public testing::Test {
protected:
    EffectFactory() { TakeTraced(); }
    fx::EffectFactory factory;
};

TEST_F(EffectFactory, EmptyFactoryOffersNothing) {
    EXPECT_EQ(factory.GetFXCount(), 0u);
    EXPECT_EQ(factory.GetFXName(0), L"");
    std::shared_ptr<fx::IBaseFX> out;
    EXPECT_EQ(factory.CreateFX(0, out), fx::eWrongFXIdx);
}

TEST_F(EffectFactory, EffectsHaveTheOrderOfTheirAddition) {
    factory.Add<test::FormsEffect>(L"First");
    factory.Add<test::FormsEffect>(L"Second");
    EXPECT_EQ(factory.GetFXCount(), 2u);
    EXPECT_EQ(factory.GetFXName(0), L"First");
    EXPECT_EQ(factory.GetFXName(1), L"Second");
    EXPECT_EQ(factory.GetFXName(2), L"");
    EXPECT_EQ(factory.GetFXName(std::uint64_t{1} << 32), L"");
}

TEST_F(EffectFactory, EveryCallMakesANewEffect) {
    factory.Add<test::FormsEffect>(L"First");
    std::shared_ptr<fx::IBaseFX> one;
    std::shared_ptr<fx::IBaseFX> two;
    EXPECT_EQ(factory.CreateFX(0, one), fx::eSuccess);
    EXPECT_EQ(factory.CreateFX(0, two), fx::eSuccess);
    EXPECT_NE(one, two);
    EXPECT_EQ(one.use_count(), 1);
    EXPECT_THAT(TakeTraced(), IsEmpty());
}

TEST_F(EffectFactory, UnknownIndexIsReportedAndLeavesTheOutPointer) {
    factory.Add<test::FormsEffect>(L"First");
    auto kept = std::make_shared<test::FormsEffect>();
    std::shared_ptr<fx::IBaseFX> out = kept;
    for (const std::uint64_t index :
         {std::uint64_t{1}, std::uint64_t{1} << 32, ~std::uint64_t{0}}) {
        EXPECT_EQ(factory.CreateFX(index, out), fx::eWrongFXIdx);
        EXPECT_EQ(out, kept);
        EXPECT_THAT(TakeTraced(), ElementsAre(L"Operation \"fx::EffectFactory::CreateFX\" "
                                              L"returned error <eWrongFXIdx>"));
    }
}

TEST_F(EffectFactory, ThrowingConstructorsBecomeCodes) {
    factory.Add<Failing<fx::Exception>>(L"Coded");
    factory.Add<Failing<Standard>>(L"Standard");
    factory.Add<Failing<Unknown>>(L"Unknown");
    factory.Add<Failing<SuccessfulException>>(L"Zero");
    auto kept = std::make_shared<test::FormsEffect>();
    std::shared_ptr<fx::IBaseFX> out = kept;
    // The constructor's argument type makes fx::Exception carry the code that is thrown.
    EXPECT_EQ(factory.CreateFX(0, out), fx::eEmptyEffect);
    EXPECT_EQ(factory.CreateFX(1, out), fx::eGenericException);
    EXPECT_EQ(factory.CreateFX(2, out), fx::eGenericException);
    EXPECT_EQ(factory.CreateFX(3, out), fx::eGenericException);
    EXPECT_EQ(out, kept);
    EXPECT_EQ(TakeTraced().size(), 4u);
}

TEST_F(EffectFactory, EntryLetsNothingOut) {
    std::shared_ptr<fx::IVorelFXFactory> out;
    EXPECT_EQ(fx::MakeFactory([](fx::EffectFactory&) { throw 7; }, out), fx::eGenericException);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(
        fx::MakeFactory([](fx::EffectFactory&) { throw fx::Exception(fx::eNotInitialized); }, out),
        fx::eNotInitialized);
    EXPECT_EQ(out, nullptr);
    EXPECT_THAT(TakeTraced(),
                ElementsAre(L"Operation \"CreateFactory\" returned error <eGenericException>",
                            L"Operation \"CreateFactory\" returned error <eNotInitialized>"));
    EXPECT_EQ(fx::MakeFactory(
                  [](fx::EffectFactory& filled) { filled.Add<test::FormsEffect>(L"Only"); }, out),
              fx::eSuccess);
    EXPECT_EQ(out->GetFXCount(), 1u);
}

}  // namespace
