// What is in the log when the process ends or the library goes: every line that was buffered.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "tracer_process/Sandbox.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TraceLifetime : public testing::Test {
protected:
    TraceLifetime() { trace_test::EnableLog(); }
    platform::ChildResult Run(const std::vector<std::string>& commands, unsigned code = 0) {
        const auto result = sandbox_.Run(commands);
        EXPECT_EQ(result.end, platform::ChildEnd::kExited) << result.reason;
        EXPECT_EQ(result.code, code) << result.output << result.error;
        return result;
    }
    // Lines "0", "1" ... of SayNumbered.
    void ExpectNumbered(std::size_t count) {
        const std::vector<std::string> texts = sandbox_.LogTexts();
        ASSERT_EQ(texts.size(), count);
        for (std::size_t i = 0; i < count; ++i) ASSERT_EQ(texts[i], "line " + std::to_string(i));
    }
    // Lines of a flood that was cut off: of each thread the first ones, whole and in order.
    void ExpectCutFlood(int threads) {
        std::map<int, int> next;
        for (const std::string& text : sandbox_.LogTexts()) {
            int thread = -1;
            int number = -1;
            ASSERT_EQ(std::sscanf(text.c_str(), "%d %d", &thread, &number), 2) << text;
            ASSERT_EQ(number, next[thread]++) << text;
            ASSERT_TRUE(text.ends_with(" end") || text.ends_with("pend")) << text;
        }
        ASSERT_EQ(next.size(), static_cast<std::size_t>(threads));
        // What had been said before the end was asked for is there.
        for (const auto& [thread, count] : next) EXPECT_GE(count, 50) << thread;
    }
    // The system's own figures waver by a few, however many the cycles were.
    static void ExpectNothingGrew(const std::string& answer) {
        constexpr int kWavering = 3;
        int handles = 0;
        int threads = 0;
        int mappings = 0;
        ASSERT_EQ(std::sscanf(answer.c_str(), "handles %d threads %d mappings %d", &handles,
                              &threads, &mappings),
                  3)
            << answer;
        for (const int grown : {handles, threads, mappings}) EXPECT_LE(grown, kWavering) << answer;
    }
    trace_test::Sandbox sandbox_;
};

TEST_F(TraceLifetime, ProcessEndWritesWhatIsBuffered) {
    Run({"load:trace_service", "say_numbered:trace_service:1000"});
    ExpectNumbered(1000);
}

TEST_F(TraceLifetime, FreeingTheLibraryWritesWhatIsBuffered) {
    Run({"load:trace_service", "say_numbered:trace_service:1000", "free:trace_service", "die:0"});
    ExpectNumbered(1000);
}

TEST_F(TraceLifetime, FreeingAtOnceLeavesTheFirstLine) {
    Run({"load:trace_service", "free:trace_service"});
    EXPECT_THAT(sandbox_.LogLines(), ElementsAre("trace_host"));
}

TEST_F(TraceLifetime, EndingAtOnceLeavesTheFirstLine) {
    Run({"load:trace_service", "exit:3"}, 3);
    EXPECT_THAT(sandbox_.LogLines(), ElementsAre("trace_host"));
}

TEST_F(TraceLifetime, LineSaidAtOnceBeforeTheEndIsThere) {
    Run({"load:trace_service", "say:trace_service:2:last words", "exit:3"}, 3);
    EXPECT_THAT(sandbox_.LogTexts(), ElementsAre("last words"));
}

TEST_F(TraceLifetime, MainThatReturnsDuringAFloodLosesNothingThatWasSaid) {
    Run({"load:trace_service", "flood_on:trace_service:4"});
    ExpectCutFlood(4);
}

TEST_F(TraceLifetime, ExitFromAnotherThreadDuringAFloodLosesNothingThatWasSaid) {
    Run({"load:trace_service", "flood_on:trace_service:4", "exit_thread:7"}, 7);
    ExpectCutFlood(4);
}

TEST_F(TraceLifetime, LoadingAndFreeingLeavesNothingBehind) {
    const auto result = Run({"cycle:trace_service:200:hello"});
    ExpectNothingGrew(result.output);
    for (const auto& file : sandbox_.LogFiles()) {
        EXPECT_GT(std::filesystem::file_size(file), std::string("trace_host\n").size());
    }
}

TEST_F(TraceLifetime, LoadingAndFreeingAtOnceLeavesNothingBehind) {
    const auto result = Run({"cycle:trace_service:100:"});
    ExpectNothingGrew(result.output);
}

}  // namespace
