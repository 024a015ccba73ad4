// The block of a process that was killed has a name that outlives it here.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <fstream>

#include "platform/Thread.h"
#include "tracer_process/Sandbox.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> Blocks(const std::string& process) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator("/dev/shm")) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("CommonTracer_" + process + "_")) names.push_back(name);
    }
    return names;
}

TEST(TraceLeftover, BlockOfAKilledProcessGoesWithTheNextOne) {
    trace_test::EnableLog();
    const trace_test::Sandbox sandbox;
    // A process of somebody else's may come next before this one looks.
    std::string process;
    for (int tries = 0; tries < 50 && Blocks(process).empty(); ++tries) {
        const auto killed = sandbox.Run({"load:trace_service", "process", "die:9"});
        process = trace_test::Lines(killed.output).at(1);
    }
    ASSERT_EQ(Blocks(process).size(), 1u);
    sandbox.Run({"load:trace_service"});
    EXPECT_EQ(Blocks(process).size(), 0u);
}

TEST(TraceLeftover, BlockOfALivingProcessStays) {
    trace_test::EnableLog();
    const trace_test::Sandbox sandbox;
    // This process's number, held by nobody.
    const fs::path own =
        "/dev/shm/CommonTracer_" + std::to_string(platform::CurrentProcessId()) + "_1";
    std::ofstream(own) << "block";
    sandbox.Run({"load:trace_service"});
    EXPECT_TRUE(fs::remove(own));
}

TEST(TraceLeftover, BlockThatSomebodyHoldsAndNamesOfOthersStay) {
    trace_test::EnableLog();
    const trace_test::Sandbox sandbox;
    // A number that no process has, and no other run of this test.
    const std::string nobody = std::to_string(1'000'000'000 + platform::CurrentProcessId());
    const fs::path names[] = {"/dev/shm/CommonTracer_" + nobody,
                              "/dev/shm/CommonTracer_x" + nobody + "_1",
                              "/dev/shm/OtherTracer_" + nobody + "_1"};
    for (const fs::path& name : names) std::ofstream(name) << "block";
    const fs::path held = "/dev/shm/CommonTracer_" + nobody + "_1";
    std::ofstream(held) << "block";
    const int file = open(held.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(file, LOCK_SH), 0);
    sandbox.Run({"load:trace_service"});
    for (const fs::path& name : names) EXPECT_TRUE(fs::remove(name)) << name;
    EXPECT_TRUE(fs::exists(held));
    close(file);
    sandbox.Run({"load:trace_service"});
    EXPECT_FALSE(fs::exists(held));
}

}  // namespace
