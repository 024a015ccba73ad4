// One process loads and unloads the library over and over, with its log on: nothing of it stays but
// what is meant to.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "host/HostSession.h"

namespace host_test {
namespace {

int Cycles() {
    return std::getenv("TARNEX_LONG_TESTS") != nullptr ? 1000 : TARNEX_LOAD_CYCLES;
}

class LoadCycle : public HostTest {
protected:
    struct Growth {
        int handles = 0;
        int threads = 0;
        int mappings = 0;
        long long bytes = 0;
    };
    Growth CycleIn(Host& host, int cycles) {
        const std::string answer = host.Do(
            {"cycle", Utf8(sandbox_.Folder() / test_support::kTarnexFile), std::to_string(cycles)});
        Growth growth;
        EXPECT_EQ(std::sscanf(answer.c_str(), "handles %d threads %d mappings %d bytes %lld",
                              &growth.handles, &growth.threads, &growth.mappings, &growth.bytes),
                  4)
            << answer;
        RecordProperty("cycles", cycles);
        RecordProperty("growth", answer);
        // What the system itself takes and gives back meanwhile.
        constexpr int kWavering = 3;
        EXPECT_LE(growth.handles, kWavering) << answer;
        EXPECT_LE(growth.threads, kWavering) << answer;
        EXPECT_LE(growth.mappings, kWavering) << answer;
        return growth;
    }
    // For all cycles together.
    static long long WaveringBytes(int cycles) {
        return 4096 + static_cast<long long>(cycles) * TARNEX_BYTES_PER_LOAD;
    }
};

TEST_F(LoadCycle, RefusedProcessKeepsNothing) {
    Host owner(sandbox_);
    ASSERT_EQ(owner.Do({"load", Utf8(sandbox_.Folder() / test_support::kTarnexFile)}), "loaded");
    Host host(sandbox_, &log_);
    const int cycles = Cycles();
    EXPECT_LE(CycleIn(host, cycles).bytes, WaveringBytes(cycles));
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_GE(sandbox_.LogFiles(), 1u);
}

// The manager lives until the process ends, whether its library is loaded or not.
TEST_F(LoadCycle, OwnerKeepsOneSmallManagerOfEachLoad) {
    constexpr long long kManagerBytes = 64;
    Host host(sandbox_, &log_);
    const int cycles = Cycles();
    EXPECT_LE(CycleIn(host, cycles).bytes, WaveringBytes(cycles) + cycles * kManagerBytes);
    EXPECT_EQ(host.Finish(), 0);
}

}  // namespace
}  // namespace host_test
