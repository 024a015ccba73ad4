// What only somebody inside the process can do to the global factory. The rest is tested from
// outside, in tests/host.

#include "tarnex/GlobalFxFactory.h"

#include <gmock/gmock.h>

#include "compositions/CompositionFactory.h"
#include "helpers/report/CapturedOutput.h"
#include "support/Text.h"
#include "tarnex/AllocationFault.h"
#include "tarnex/TestPlugins.h"

namespace tarnex {
namespace {

using test_support::AllocationFault;
using test_support::Fault;
using testing::ElementsAre;
using testing::IsEmpty;

// An explicit instantiation may name what is private: the one way to the factory's own list, and to
// its composition factory.
using Compositions = std::shared_ptr<compositions::CompositionFactory>;
template <auto Effects, auto Factory>
struct Private {
    friend std::list<EffectRecord>& ListOf(GlobalFXFactory& factory) { return factory.*Effects; }
    friend Compositions& CompositionsOf(GlobalFXFactory& factory) { return factory.*Factory; }
};
std::list<EffectRecord>& ListOf(GlobalFXFactory& factory);
Compositions& CompositionsOf(GlobalFXFactory& factory);
template struct Private<&GlobalFXFactory::effects_, &GlobalFXFactory::compositionFactory_>;

// The library's own answers every failure with a code; what it calls may be anybody's.
class ThrowingCompositions : public compositions::CompositionFactory {
public:
    explicit ThrowingCompositions(Fault fault) : CompositionFactory(L""), fault_(fault) {}

    fx::_eError CreateFX(const std::wstring&, std::shared_ptr<fx::IBaseFX>&) override {
        AllocationFault failing(fault_, 1);
        static_cast<void>(std::make_unique<int>());
        return fx::eSuccess;
    }

private:
    Fault fault_;
};

class GlobalFxFactory : public testing::Test {
protected:
    GlobalFxFactory() : factory_(PluginFolder(), L"plain.plugin|", L"", 0) {
        captured::TakeTraced();
        captured::TakeDebugged();
    }

    // GetEffects with its allocation failing: the code, and what it left in the caller's list.
    _eError ListWithFault(Fault fault) {
        AllocationFault failing(fault, 1);
        const _eError code = factory_.GetEffects(records_);
        EXPECT_TRUE(failing.Happened());
        return code;
    }

    GlobalFXFactory factory_;
    std::list<EffectRecord> records_{{7, 7, 7, L"mine", true}};
};

TEST_F(GlobalFxFactory, OwnListAsArgumentChangesNothing) {
    std::list<EffectRecord>& own = ListOf(factory_);
    ASSERT_EQ(own.size(), 2u);
    const EffectRecord* first = &own.front();
    EXPECT_EQ(factory_.GetEffects(own), eSuccess);
    EXPECT_EQ(own.size(), 2u);
    EXPECT_EQ(&own.front(), first);
    EXPECT_THAT(captured::TakeTraced(), IsEmpty());
}

TEST_F(GlobalFxFactory, ListedRecordsAreCopies) {
    ASSERT_EQ(factory_.GetEffects(records_), eSuccess);
    ASSERT_EQ(records_.size(), 2u);
    records_.front().name = L"changed";
    EXPECT_EQ(ListOf(factory_).front().name, L"plain.first");
}

TEST_F(GlobalFxFactory, ListingThatRunsOutOfMemoryIsAGenericException) {
    EXPECT_EQ(ListWithFault(Fault::kBadAlloc), eGenericException);
    EXPECT_THAT(captured::TakeTraced(),
                ElementsAre(L"Operation returned error <eGenericException>"));
    EXPECT_THAT(captured::TakeDebugged(),
                ElementsAre("Exception catched: (...) file: GlobalFxFactory, line: (146) name: "
                            "tarnex::GlobalFXFactory::GetEffects\n"));
    EXPECT_EQ(records_.size(), 1u) << "the caller's list is unchanged";
}

TEST_F(GlobalFxFactory, ListingGivesTheCodeOfAManagerException) {
    EXPECT_EQ(ListWithFault(Fault::kManagerException), eGenericError);
    EXPECT_THAT(captured::TakeTraced(), ElementsAre(L"Operation returned error <eGenericError>"));
    EXPECT_THAT(captured::TakeDebugged(),
                ElementsAre("Exception catched: (10) file: GlobalFxFactory, line: (146) name: "
                            "tarnex::GlobalFXFactory::GetEffects\n"));
}

TEST_F(GlobalFxFactory, ListingTakesAnEffectExceptionForAnyOther) {
    EXPECT_EQ(ListWithFault(Fault::kEffectException), eGenericException);
    EXPECT_THAT(captured::TakeTraced(),
                ElementsAre(L"Operation returned error <eGenericException>"));
}

TEST_F(GlobalFxFactory, ExceptionOutOfRegistrationIsReportedUnderItsName) {
    const std::wstring path = L"a path too long to be kept without an allocation";
    const auto code = [&](Fault fault) {
        AllocationFault failing(fault, 1);
        return factory_.RegisterEffect(path, false);
    };
    const std::wstring start =
        L"Operation \"tarnex::GlobalFXFactory::RegisterEffect\" returned error ";
    EXPECT_EQ(code(Fault::kManagerException), eGenericError);
    EXPECT_EQ(code(Fault::kEngineException), eVorelExceptionCatched);
    EXPECT_EQ(code(Fault::kBadAlloc), eGenericException);
    EXPECT_THAT(captured::TakeTraced(),
                ElementsAre(start + L"<eGenericError>", start + L"<eVorelExceptionCatched>",
                            start + L"<eGenericException>"));
}

TEST_F(GlobalFxFactory, ExceptionOutOfCreationByPathGivesItsCodeAndLeavesThePointer) {
    std::shared_ptr<fx::IBaseFX> out;
    ASSERT_EQ(factory_.CreateFX(0, out), fx::eSuccess);
    const fx::IBaseFX* before = out.get();
    const auto code = [&](Fault fault) {
        CompositionsOf(factory_) = std::make_shared<ThrowingCompositions>(fault);
        return factory_.CreateFX(L"any path", out);
    };
    EXPECT_EQ(code(Fault::kEffectException), fx::eTimeout);
    EXPECT_EQ(code(Fault::kManagerException), fx::eGenericException);
    EXPECT_EQ(code(Fault::kEngineException), fx::eGenericException);
    EXPECT_EQ(code(Fault::kBadAlloc), fx::eGenericException);
    EXPECT_EQ(out.get(), before);
    const std::wstring generic = L"Operation returned error <eGenericException>";
    EXPECT_THAT(captured::TakeTraced(),
                ElementsAre(L"Operation returned error <eTimeout>", generic, generic, generic));
    const std::string where =
        " file: GlobalFxFactory, line: (210) name: tarnex::GlobalFXFactory::CreateFX\n";
    const std::string unknown = "Exception catched: (...)" + where;
    EXPECT_THAT(captured::TakeDebugged(),
                ElementsAre("Exception catched: (" + std::to_string(fx::eTimeout) + ")" + where,
                            unknown, unknown, unknown));
}

TEST_F(GlobalFxFactory, FactoryThatIsNotValidLeavesThePointer) {
    std::shared_ptr<fx::IBaseFX> out;
    ASSERT_EQ(factory_.CreateFX(0, out), fx::eSuccess);
    const fx::IBaseFX* before = out.get();
    GlobalFXFactory broken(PluginFolder(), L"entry_throws.plugin|", L"", 0);
    EXPECT_EQ(broken.CreateFX(0, out), fx::eInvalidFxFactoryObject);
    EXPECT_EQ(broken.CreateFX(~std::uint64_t{0}, out), fx::eInvalidFxFactoryObject);
    EXPECT_EQ(broken.CreateFX(L"any path", out), fx::eInvalidFxFactoryObject);
    EXPECT_EQ(out.get(), before);
}

TEST_F(GlobalFxFactory, MemoryRunningOutAtAnyPointOfConstructionLeavesAUsableObject) {
    bool happened = true;
    for (int countdown = 1; happened && countdown < 1000; ++countdown) {
        const std::wstring folder = PluginFolder();
        const std::wstring list = L"plain.plugin|";
        const std::wstring none;
        std::uint32_t count = 0;
        {
            AllocationFault failing(Fault::kBadAlloc, countdown);
            GlobalFXFactory factory(folder, list, none, 0);
            happened = failing.Happened();
            count = factory.GetFXCount();
        }
        EXPECT_TRUE(count == 0 || count == 2) << countdown;
    }
    EXPECT_FALSE(happened) << "no construction came through";
}

}  // namespace
}  // namespace tarnex
