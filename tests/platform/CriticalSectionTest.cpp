#include "platform/CriticalSection.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

TEST(CriticalSection, OneThreadAtATimeIsInside) {
    alignas(8) unsigned char section[platform::kCriticalSectionSize];
    platform::InitializeCriticalSection(section);
    constexpr int kThreads = 4;
    constexpr int kRounds = 20'000;
    int count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                platform::EnterCriticalSection(section);
                ++count;
                platform::LeaveCriticalSection(section);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(count, kThreads * kRounds);
    platform::DeleteCriticalSection(section);
}

}  // namespace
