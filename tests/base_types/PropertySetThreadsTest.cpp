#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "base_types/TestProperties.h"

namespace {

using namespace test;
using namespace base_types;

constexpr int kThreads = 4;
constexpr int kRounds = 2000;

template <class Body>
void OnAllThreads(Body body) {
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) threads.emplace_back(body, i);
    for (std::thread& thread : threads) thread.join();
}

TEST(PropertySetThreads, TextsAreNeverTorn) {
    PropertySet set;
    Add<std::wstring>(set, L"Text", std::wstring(40, L'a'));
    Add<std::int64_t>(set, L"Number", 0);
    OnAllThreads([&](int thread) {
        std::wstring text;
        for (int i = 0; i < kRounds; ++i) {
            const auto letter = static_cast<wchar_t>(L'a' + thread);
            ASSERT_EQ(set.SetProperty(L"Text", std::wstring(20 + i % 40, letter)), eSuccess);
            ASSERT_EQ(set.GetProperty(L"Text", text), eSuccess);
            ASSERT_EQ(text.find_first_not_of(text[0]), std::wstring::npos);
            std::int64_t number = 0;
            ASSERT_EQ(set.SetProperty(L"Number", static_cast<std::int64_t>(i)), eSuccess);
            ASSERT_EQ(set.GetProperty(L"Number", number), eSuccess);
        }
    });
}

TEST(PropertySetThreads, EveryWriterSeesItsOwnPropertyAmongLookupsOfOthers) {
    PropertySet set;
    for (int i = 0; i < 16; ++i) Add(set, L"Property" + std::to_wstring(i), 0);
    OnAllThreads([&](int thread) {
        const std::wstring own = L"Property" + std::to_wstring(thread);
        std::int32_t value = 0;
        for (int i = 0; i < kRounds; ++i) {
            ASSERT_EQ(set.SetProperty(own, i), eSuccess);
            ASSERT_EQ(set.GetProperty(L"Property" + std::to_wstring(i % 16), value), eSuccess);
            ASSERT_EQ(set.GetProperty(own, value), eSuccess);
            ASSERT_EQ(value, i);
        }
    });
}

TEST(PropertySetThreads, PropertiesMayBeAddedWhileOthersRead) {
    PropertySet set;
    Add(set, L"Always", 1);
    OnAllThreads([&](int thread) {
        std::int32_t value = 0;
        for (int i = 0; i < 200; ++i) {
            const std::wstring name = std::to_wstring(i) + L"-" + std::to_wstring(thread);
            Add(set, name, i);
            ASSERT_EQ(set.GetProperty(name, value), eSuccess);
            ASSERT_EQ(value, i);
            ASSERT_EQ(set.GetProperty(L"Always", value), eSuccess);
            ASSERT_GE(NamesOf(set).size(), static_cast<std::size_t>(i + 1));
        }
    });
    EXPECT_EQ(NamesOf(set).size(), 1u + kThreads * 200u);
}

TEST(PropertySetThreads, CopyLocksItsTarget) {
    PropertySet target;
    for (const wchar_t* name : {L"b", L"a"}) Add<std::wstring>(target, name, L"");
    OnAllThreads([&](int thread) {
        auto source = std::make_shared<PropertySet>();
        const std::wstring text(30, static_cast<wchar_t>(L'a' + thread));
        for (const wchar_t* name : {L"b", L"a"}) Add<std::wstring>(*source, name, text);
        std::wstring read;
        for (int i = 0; i < kRounds / 4; ++i) {
            ASSERT_EQ(target.CopyPropertiesFrom(source), eSuccess);
            ASSERT_EQ(target.GetProperty(L"b", read), eSuccess);
            ASSERT_EQ(read.find_first_not_of(read[0]), std::wstring::npos);
        }
    });
}

TEST(PropertySetThreads, CopyLeavesItsSourceUnlocked) {
    const auto source = std::make_shared<PropertySet>();
    int calls = 0;
    source->AddProperty(L"Acting", std::make_unique<ActingProperty>(ePropertyInt, [&] {
                            ++calls;
                            ExpectUnlocked(*source);
                        }));
    PropertySet target;
    Add(target, L"Acting", 1);
    EXPECT_EQ(target.CopyPropertiesFrom(source), eSuccess);
    EXPECT_EQ(calls, 1);
}

}  // namespace
