#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <map>
#include <thread>

#include "MemoryLog.h"
#include "platform/Thread.h"

namespace {

using test_tracer::TestTracer;

constexpr int kThreads = 8;

int Messages() {
    return std::getenv("TARNEX_LONG_TESTS") != nullptr ? 1'000'000 : 200'000;
}

// Writers of all threads against a writer that drains without a pause: every line once, whole, and
// in order per thread.
TEST(Flood, EveryLineOnceWholeAndInOrder) {
    TestTracer test;
    const int each = Messages() / kThreads;
    std::atomic<bool> stop{false};
    std::thread log([&] {
        while (!stop.load(std::memory_order_acquire)) test.writer->DrainOnce();
        test.writer->Finish();
    });
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&test, t, each] {
            const std::wstring padding(static_cast<std::size_t>(t * 7), L'p');
            for (int i = 0; i < each; ++i) {
                test.Write(std::to_wstring(t) + L" " + std::to_wstring(i) + L" " + padding +
                           L"end\n");
                if (i % 64 == 0) std::this_thread::yield();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    stop.store(true, std::memory_order_release);
    log.join();

    std::map<int, int> next;
    int count = 0;
    for (const std::string& line : test.sink.Lines()) {
        int thread = -1;
        int number = -1;
        ASSERT_EQ(std::sscanf(line.c_str(), "%d %d", &thread, &number), 2) << line;
        ASSERT_EQ(number, next[thread]++) << line;
        ASSERT_EQ(line, std::to_string(thread) + " " + std::to_string(number) + " " +
                            std::string(static_cast<std::size_t>(thread * 7), 'p') + "end");
        ++count;
    }
    EXPECT_EQ(count, each * kThreads);
}

}  // namespace
