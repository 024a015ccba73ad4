// Keys and values when memory runs out: the n-th allocation fails, or that one and all behind it.

#include <gtest/gtest.h>

#include "helpers/regs/RegKey.h"
#include "helpers/regs/RegValue.h"
#include "helpers/report/CapturedOutput.h"
#include "platform/SettingsStore.h"
#include "support/Usage.h"
#include "tarnex/AllocationFault.h"

namespace {

using helpers::regs::HandleStack;
using helpers::regs::RegKey;
using helpers::regs::StringConverter;
using test_support::AllocationFault;
using test_support::Fault;
using test_support::ForEachAllocation;
using test_support::LiveAllocations;
using StringValue = helpers::regs::RegValue<std::wstring, StringConverter>;

// More than one call takes.
const std::wstring kKey =
    L"Software\\Tesmar\\Tests\\" + std::wstring(120, L'a') + L"\\" + std::wstring(120, L'b');

class RegMemory : public testing::Test {
protected:
    RegMemory() {
        platform::CurrentUserSettings();  // made once and kept
        test_platform::ResetSettings();
        test_platform::PutValue(kKey, L"value", test_platform::ValueKind::kString,
                                test_platform::StringBytes(u"a text of a value in the store"));
    }
    ~RegMemory() override { test_platform::ResetSettings(); }

    // Calls `round` for each allocation: nothing is logged, nothing of it stays.
    template <class Round>
    void ForEachWithoutLeak(Round round) {
        ForEachAllocation([&](int nth, bool lasts) {
            const std::int64_t live = LiveAllocations();
            const std::int64_t handles = test_support::CountUsage().handles;
            const bool happened = round(nth, lasts);
            EXPECT_EQ(LiveAllocations(), live) << "leaked";
            EXPECT_EQ(test_support::CountUsage().handles, handles) << "leaked";
            EXPECT_TRUE(captured::TakeTraced().empty());
            return happened;
        });
    }
};

TEST_F(RegMemory, KeyIsOpenOrAsItWasAndNoHandleIsLost) {
    for (const bool create : {false, true}) {
        ForEachWithoutLeak([&](int nth, bool lasts) {
            bool happened = true;
            bool opened = false;
            const RegKey tested(kKey);
            HandleStack handles;
            platform::SettingsKey key = nullptr;
            try {
                const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
                opened = tested.Open(platform::CurrentUserSettings(), create, handles, key);
                happened = fault.Happened();
            } catch (const std::bad_alloc&) {
            }
            EXPECT_EQ(opened, key != nullptr);
            if (!opened) {
                EXPECT_TRUE(happened);
                EXPECT_LT(handles.Size(), 2u);
                EXPECT_TRUE(tested.Open(platform::CurrentUserSettings(), create, handles, key));
            }
            EXPECT_NE(key, nullptr);
            return happened;
        });
    }
}

TEST_F(RegMemory, HandleThatCannotBeKeptIsClosed) {
    const std::wstring path = L"Software\\Tesmar";
    const std::int64_t live = LiveAllocations();
    const std::int64_t open = test_support::CountUsage().handles;
    int refused = 0;
    {
        HandleStack handles;
        for (int i = 0; i < 200; ++i) {
            const platform::SettingsKey key =
                platform::OpenSettingsKey(platform::CurrentUserSettings(), path, 0x20019);
            ASSERT_NE(key, nullptr);
            const AllocationFault fault(Fault::kBadAlloc, 1, true);
            try {
                handles.Push(key);
            } catch (const std::bad_alloc&) {
                ++refused;
            }
        }
        EXPECT_EQ(handles.Size() + static_cast<std::size_t>(refused), 200u);
    }
    EXPECT_GT(refused, 0);
    EXPECT_EQ(LiveAllocations(), live) << "leaked";
    EXPECT_EQ(test_support::CountUsage().handles, open) << "leaked";
}

TEST_F(RegMemory, ValueIsReadOrAsItWas) {
    HandleStack handles;
    platform::SettingsKey key = nullptr;
    ASSERT_TRUE(RegKey(kKey).Open(platform::CurrentUserSettings(), false, handles, key));
    ForEachWithoutLeak([&](int nth, bool lasts) {
        bool happened = true;
        StringValue value(kKey, L"value");
        try {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            EXPECT_TRUE(value.Read(key));
            happened = fault.Happened();
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(value.Value(), L"");
            EXPECT_TRUE(value.Read(key));
        }
        EXPECT_EQ(value.Value(), L"a text of a value in the store");
        return happened;
    });
}

}  // namespace
