#include "tarnex/TarnexImpl.h"

#include <gmock/gmock.h>

#include "helpers/report/CapturedOutput.h"
#include "tarnex/AllocationFault.h"
#include "tarnex/GlobalFxFactory.h"

namespace tarnex {
namespace {

using test_support::AllocationFault;
using test_support::Fault;
using testing::ElementsAre;

const std::wstring kNone;

std::wstring Line(const std::wstring& error) {
    return L"Operation \"tarnex::TarnexImpl::GetFXFactory\" returned error <" + error + L">";
}

struct Case {
    Fault fault;
    _eError code;
    const wchar_t* name;
};

class FailingFactory : public testing::TestWithParam<Case> {};

// The first allocation is the factory's own.
TEST_P(FailingFactory, IsReportedAndTheNextCallTriesAgain) {
    TarnexImpl manager;
    std::shared_ptr<GlobalFXFactory> out;
    captured::TakeTraced();
    {
        AllocationFault failing(GetParam().fault, 1);
        EXPECT_EQ(manager.GetFXFactory(kNone, kNone, kNone, 0, out), GetParam().code);
    }
    EXPECT_EQ(out, nullptr);
    EXPECT_THAT(captured::TakeTraced(), ElementsAre(Line(GetParam().name)));

    EXPECT_EQ(manager.GetFXFactory(kNone, kNone, kNone, 0, out), eSuccess);
    EXPECT_NE(out, nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    TarnexImpl, FailingFactory,
    testing::Values(
        Case{Fault::kManagerException, eGenericError, L"eGenericError"},
        Case{Fault::kEngineException, eVorelExceptionCatched, L"eVorelExceptionCatched"},
        Case{Fault::kEffectException, eNonInterfaceException, L"eNonInterfaceException"},
        Case{Fault::kBadAlloc, eNonInterfaceException, L"eNonInterfaceException"}));

TEST(TarnexImpl, LastHolderDestroysTheFactoryWhenTheManagerIsGone) {
    auto manager = std::make_unique<TarnexImpl>();
    std::shared_ptr<GlobalFXFactory> out;
    ASSERT_EQ(manager->GetFXFactory(kNone, kNone, kNone, 0, out), eSuccess);
    EXPECT_EQ(out.use_count(), 2);
    manager.reset();
    EXPECT_EQ(out.use_count(), 1);
    EXPECT_EQ(out->GetFXCount(), 0u);
}

}  // namespace
}  // namespace tarnex
