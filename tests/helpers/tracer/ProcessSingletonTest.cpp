// The count of the modules that use the process's block.

#include "helpers/tracer/process_singleton.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using helpers::process_singleton;

TEST(ProcessSingleton, ThreadsAttachAndDetach) {
    process_singleton keeper;
    ASSERT_NE(keeper.Attach(true), process_singleton::Outcome::kAbsent);
    std::atomic_ref<std::uint32_t> references(keeper.Block()->references);
    const std::uint32_t before = references.load();
    std::atomic<int> absent{0};
    std::atomic<bool> done{false};
    // Attaching is slow beside counting: this one counts as fast as many modules would.
    std::thread counter([&] {
        while (!done.load()) {
            references.fetch_add(1);
            references.fetch_sub(1);
        }
    });
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&absent] {
            for (int round = 0; round < 1000; ++round) {
                process_singleton module;
                if (module.Attach(true) != process_singleton::Outcome::kOpened) ++absent;
                module.Detach();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    done = true;
    counter.join();
    EXPECT_EQ(absent.load(), 0);
    EXPECT_EQ(references.load(), before);
    keeper.Detach();
}

}  // namespace
