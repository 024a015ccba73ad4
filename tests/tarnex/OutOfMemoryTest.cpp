// Memory runs out in every operation of the manager and of its factory: at the first allocation, at
// the second and so on. A code comes back, what was there stays, and the next call goes well.

#include <gmock/gmock.h>

#include "compositions/archive/TempFolder.h"
#include "support/Text.h"
#include "tarnex/GlobalFxFactory.h"
#include "tarnex/LeakCheck.h"
#include "tarnex/TarnexImpl.h"
#include "tarnex/TestPlugins.h"

namespace tarnex {
namespace {

using test_support::AllocationFault;
using test_support::Fault;
using test_support::ForEachAllocation;
using test_support::ForEachWithoutLeak;
using test_support::ForgetReports;
using test_support::LiveAllocations;
using testing::AnyOf;

constexpr char kScript[] =
    "[SETUP]\nNAME = \"A name that is short on no system at all\"\nCATEGORY = \"A category that is "
    "none the shorter, neither\"\n[SOURCES]\n"
    "Back = INPUT\n[EFFECTS]\nB = \"An effect of some name\"\n[STRUCTURE]\nOUTPUT = B( Back )\n";

using Records = std::list<EffectRecord>;

Records EffectsOf(GlobalFXFactory& factory) {
    Records records;
    EXPECT_EQ(factory.GetEffects(records), eSuccess);
    return records;
}

// What a round did, without anything that its texts could hold on to.
template <class Code>
struct Outcome {
    Code code;
    bool happened;
};

template <class Call>
auto WithFault(int nth, bool lasts, const Call& call) {
    const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
    const auto code = call();
    return Outcome<decltype(call())>{code, fault.Happened()};
}

class ManagerOutOfMemory : public testing::Test {
protected:
    ManagerOutOfMemory() {
        WriteBytes(files_ / "script.txt", kScript);
        // Whatever is made once and kept.
        GlobalFXFactory first(plugins_, list_, none_, 0);
        first.RegisterEffect(script_, true);
        std::shared_ptr<fx::IBaseFX> effect;
        first.CreateFX(script_, effect);
        ForgetReports();
    }

    TempFolder files_;
    const std::wstring plugins_ = PluginFolder();
    const std::wstring list_ = L"plain.plugin|";
    const std::wstring none_;
    const std::wstring script_ = files_.Wide("script.txt");
    const std::wstring id_ =
        L"A name that is short on no system at all\\A category that is none the shorter, neither";
};

TEST_F(ManagerOutOfMemory, FactoryIsBuiltByALaterCallOrAnswersThatItIsNotValid) {
    ForEachAllocation([&](int nth, bool lasts) {
        ForgetReports();
        const std::int64_t live = LiveAllocations();
        bool happened = true;
        {
            TarnexImpl manager;
            std::shared_ptr<GlobalFXFactory> out;
            const auto outcome = WithFault(
                nth, lasts, [&] { return manager.GetFXFactory(plugins_, list_, none_, 0, out); });
            happened = outcome.happened;
            if (outcome.code != eSuccess) {
                EXPECT_TRUE(happened);
                EXPECT_EQ(outcome.code, eNonInterfaceException);
                EXPECT_EQ(out, nullptr);
                EXPECT_EQ(manager.GetFXFactory(plugins_, list_, none_, 0, out), eSuccess);
                EXPECT_EQ(out->GetFXCount(), 2u);
            }
            std::shared_ptr<fx::IBaseFX> effect;
            if (const std::uint32_t count = out->GetFXCount(); count == 0) {
                EXPECT_TRUE(happened);
                EXPECT_EQ(out->CreateFX(0, effect), fx::eInvalidFxFactoryObject);
            } else {
                EXPECT_EQ(count, 2u);
                EXPECT_EQ(out->CreateFX(0, effect), fx::eSuccess);
            }
            ForgetReports();
        }
        EXPECT_EQ(LiveAllocations(), live) << "leaked";
        return happened;
    });
}

class FactoryOutOfMemory : public ManagerOutOfMemory {
protected:
    void SetUp() override {
        factory_ = std::make_unique<GlobalFXFactory>(plugins_, list_, none_, 0);
        ASSERT_EQ(factory_->RegisterEffect(script_, true), eSuccess);
        ASSERT_EQ(factory_->GetFXCount(), 3u);
    }
    template <class Create>
    void ExpectCreatedOrRefused(const Create& create) {
        ForEachAllocation([&](int nth, bool lasts) {
            ForgetReports();
            const std::int64_t live = LiveAllocations();
            bool happened = true;
            {
                std::shared_ptr<fx::IBaseFX> out;
                const auto outcome = WithFault(nth, lasts, [&] { return create(out); });
                happened = outcome.happened;
                if (outcome.code != fx::eSuccess) {
                    EXPECT_TRUE(happened);
                    EXPECT_THAT(outcome.code, AnyOf(fx::eGenericException, fx::eCouldNotCreateFX));
                    EXPECT_EQ(out, nullptr);
                    EXPECT_EQ(create(out), fx::eSuccess) << "the next call";
                }
                EXPECT_NE(out, nullptr);
                ForgetReports();
            }
            EXPECT_EQ(LiveAllocations(), live) << "leaked";
            return happened;
        });
        EXPECT_EQ(factory_->GetFXCount(), 3u);
        EXPECT_EQ(EffectsOf(*factory_).size(), 3u);
    }

    std::unique_ptr<GlobalFXFactory> factory_;
};

TEST_F(FactoryOutOfMemory, CreationByIndex) {
    ExpectCreatedOrRefused([&](auto& out) { return factory_->CreateFX(2, out); });
}

TEST_F(FactoryOutOfMemory, CreationByPath) {
    ExpectCreatedOrRefused([&](auto& out) { return factory_->CreateFX(script_, out); });
}

TEST_F(FactoryOutOfMemory, CreationByIndexGivesAnEffectOrEmptiesTheOutPointer) {
    std::shared_ptr<fx::IBaseFX> kept;
    ASSERT_EQ(factory_->CreateFX(1, kept), fx::eSuccess);
    for (const std::uint64_t index : {std::uint64_t{0}, std::uint64_t{2}}) {
        const std::size_t made = test_support::AllocationsMade();
        ASSERT_EQ(factory_->CreateFX(index, kept), fx::eSuccess);
        if (test_support::AllocationsMade() == made) continue;  // a library's memory is its own
        ForEachWithoutLeak([&](int nth, bool lasts) {
            std::shared_ptr<fx::IBaseFX> out = kept;
            const auto outcome =
                WithFault(nth, lasts, [&] { return factory_->CreateFX(index, out); });
            EXPECT_NE(out, kept);
            EXPECT_EQ(out != nullptr, outcome.code == fx::eSuccess);
            if (outcome.code != fx::eSuccess) {
                EXPECT_TRUE(outcome.happened);
                EXPECT_THAT(outcome.code, AnyOf(fx::eGenericException, fx::eCouldNotCreateFX));
                EXPECT_EQ(factory_->CreateFX(index, out), fx::eSuccess) << "the next call";
            }
            return outcome.happened;
        });
    }
}

TEST_F(FactoryOutOfMemory, CreationByPathGivesAnEffectOrLeavesTheOutPointer) {
    std::shared_ptr<fx::IBaseFX> kept;
    ASSERT_EQ(factory_->CreateFX(1, kept), fx::eSuccess);
    const std::wstring missing = files_.Wide("there is no such script.txt");
    for (const std::wstring& path : {script_, missing}) {
        ForEachWithoutLeak([&](int nth, bool lasts) {
            std::shared_ptr<fx::IBaseFX> out = kept;
            const auto outcome =
                WithFault(nth, lasts, [&] { return factory_->CreateFX(path, out); });
            EXPECT_EQ(out == kept, outcome.code != fx::eSuccess);
            if (outcome.code != fx::eSuccess) {
                EXPECT_TRUE(outcome.happened || path == missing);
                EXPECT_THAT(outcome.code, AnyOf(fx::eGenericException, fx::eCouldNotCreateFX));
            }
            return outcome.happened;
        });
    }
}

TEST_F(FactoryOutOfMemory, CodesOfWrongCallsAreTheSame) {
    std::shared_ptr<fx::IBaseFX> out;
    const std::wstring unknown = L"an effect that nobody knows";
    ForEachWithoutLeak([&](int nth, bool lasts) {
        const auto create = WithFault(nth, lasts, [&] { return factory_->CreateFX(99, out); });
        EXPECT_EQ(create.code, fx::eWrongFXIdx);
        const auto remove = WithFault(nth, lasts, [&] { return factory_->RemoveEffect(unknown); });
        EXPECT_EQ(remove.code, eWrongFXName);
        return create.happened || remove.happened;
    });
    EXPECT_EQ(out, nullptr);
}

TEST_F(FactoryOutOfMemory, NameIsTheNameOrEmpty) {
    ForEachWithoutLeak([&](int nth, bool lasts) {
        std::wstring name;
        const auto outcome = WithFault(nth, lasts, [&] {
            name = factory_->GetFXName(2);
            return 0;
        });
        EXPECT_EQ(name, outcome.happened ? none_ : id_);
        return outcome.happened;
    });
}

TEST_F(FactoryOutOfMemory, ListIsWholeOrAsItWas) {
    ForEachWithoutLeak([&](int nth, bool lasts) {
        Records records{{7, 7, 7, L"mine", true}};
        const auto outcome = WithFault(nth, lasts, [&] { return factory_->GetEffects(records); });
        EXPECT_EQ(outcome.code, outcome.happened ? eGenericException : eSuccess);
        EXPECT_EQ(records.size(), outcome.happened ? 1u : 3u);
        return outcome.happened;
    });
}

// What is registered and cannot be created stays in the catalogue, without a record: callers find
// it by its index alone.
TEST_F(FactoryOutOfMemory, RegistrationIsWholeOrNoneOrWithoutARecord) {
    int whole = 0;
    int none = 0;
    int withoutRecord = 0;
    ForEachAllocation([&](int nth, bool lasts) {
        ForgetReports();
        const std::int64_t live = LiveAllocations();
        bool happened = true;
        {
            GlobalFXFactory factory(plugins_, none_, none_, 0);
            const auto outcome =
                WithFault(nth, lasts, [&] { return factory.RegisterEffect(script_, true); });
            happened = outcome.happened;
            const _eError again = factory.RegisterEffect(script_, true);
            std::shared_ptr<fx::IBaseFX> effect;
            EXPECT_EQ(factory.CreateFX(0, effect), fx::eSuccess);
            EXPECT_EQ(factory.GetFXCount(), 1u);
            EXPECT_EQ(factory.GetFXName(0), id_);
            if (outcome.code == eSuccess) {
                ++whole;
                EXPECT_EQ(again, eCouldNotRegisterNewComposition);
                EXPECT_EQ(EffectsOf(factory).size(), 1u);
            } else if (again == eSuccess) {
                ++none;
                EXPECT_THAT(outcome.code,
                            AnyOf(eCouldNotRegisterNewComposition, eGenericException));
                EXPECT_EQ(EffectsOf(factory).size(), 1u);
            } else {
                ++withoutRecord;
                EXPECT_THAT(outcome.code, AnyOf(eErrorCreatingEffect, eGenericException));
                EXPECT_EQ(again, eCouldNotRegisterNewComposition);
                EXPECT_EQ(EffectsOf(factory).size(), 0u);
            }
            ForgetReports();
        }
        EXPECT_EQ(LiveAllocations(), live) << "leaked";
        return happened;
    });
    EXPECT_GT(whole, 0);
    EXPECT_GT(none, 0);
    EXPECT_GT(withoutRecord, 0);
}

// By its name in the folder, a script that is faulty or missing, and a path that is known.
TEST_F(FactoryOutOfMemory, OtherRegistrationsAreWholeOrNone) {
    WriteBytes(files_ / "faulty.txt", "[SETUP]\nNAME = \"A name that stands alone\"\n");
    const std::wstring folder = files_.Wide("").substr(0, files_.Wide("x").size() - 2);
    const std::wstring byName = L"script.txt";
    ForEachWithoutLeak([&](int nth, bool lasts) {
        GlobalFXFactory factory(plugins_, none_, folder, 0);
        const auto outcome =
            WithFault(nth, lasts, [&] { return factory.RegisterEffect(byName, false); });
        EXPECT_TRUE(outcome.happened || outcome.code == eSuccess);
        const _eError again = factory.RegisterEffect(byName, false);
        EXPECT_THAT(again, AnyOf(eSuccess, eCouldNotRegisterNewComposition));
        if (again == eSuccess) {
            EXPECT_THAT(outcome.code, AnyOf(eCouldNotRegisterNewComposition, eGenericException));
        }
        EXPECT_EQ(factory.GetFXCount(), 1u);
        EXPECT_EQ(factory.GetFXName(0), id_);
        return outcome.happened;
    });
    const std::wstring faulty = files_.Wide("faulty.txt");
    const std::wstring missing = files_.Wide("there is no such script.txt");
    for (const std::wstring& path : {faulty, missing, script_}) {
        ForEachWithoutLeak([&](int nth, bool lasts) {
            const auto outcome =
                WithFault(nth, lasts, [&] { return factory_->RegisterEffect(path, true); });
            EXPECT_THAT(outcome.code, AnyOf(eCouldNotRegisterNewComposition, eGenericException));
            EXPECT_TRUE(outcome.happened || outcome.code == eCouldNotRegisterNewComposition);
            EXPECT_EQ(factory_->GetFXCount(), 3u);
            return outcome.happened;
        });
    }
    EXPECT_EQ(EffectsOf(*factory_).size(), 3u);
}

TEST_F(FactoryOutOfMemory, RevivalIsWholeOrNone) {
    ForEachWithoutLeak([&](int nth, bool lasts) {
        EXPECT_EQ(factory_->RemoveEffect(id_), eSuccess);
        const auto outcome =
            WithFault(nth, lasts, [&] { return factory_->RegisterEffect(script_, true); });
        EXPECT_EQ(outcome.code, outcome.happened ? eGenericException : eSuccess);
        EXPECT_EQ(EffectsOf(*factory_).back().enabled, !outcome.happened);
        EXPECT_EQ(factory_->RegisterEffect(script_, true),
                  outcome.happened ? eSuccess : eCouldNotRegisterNewComposition);
        EXPECT_EQ(factory_->GetFXCount(), 3u);
        return outcome.happened;
    });
}

}  // namespace
}  // namespace tarnex
