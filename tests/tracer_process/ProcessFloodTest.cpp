// The whole way, from eight threads of a process to the lines of its file.

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

#include "tracer_process/Sandbox.h"

namespace {

TEST(ProcessFlood, EveryLineIsInTheFileOnceWholeAndInOrder) {
    constexpr int kThreads = 8;
    const int messages = std::getenv("TARNEX_LONG_TESTS") != nullptr ? 1'000'000 : 200'000;
    trace_test::EnableLog();
    const trace_test::Sandbox sandbox;
    const auto result =
        sandbox.Run({"load:trace_service", "flood:trace_service:8:" + std::to_string(messages)});
    ASSERT_EQ(result.end, platform::ChildEnd::kExited) << result.reason;
    std::map<int, int> next;
    int count = 0;
    for (const std::string& text : sandbox.LogTexts()) {
        int thread = -1;
        int number = -1;
        ASSERT_EQ(std::sscanf(text.c_str(), "%d %d", &thread, &number), 2) << text;
        ASSERT_EQ(number, next[thread]++) << text;
        ASSERT_EQ(text, std::to_string(thread) + " " + std::to_string(number) + " " +
                            std::string(static_cast<std::size_t>(7 * thread), 'p') + "end");
        ++count;
    }
    EXPECT_EQ(count, messages);
    EXPECT_EQ(next.size(), static_cast<std::size_t>(kThreads));
}

}  // namespace
