// The tracer when the system refuses it something: lines may be lost, but whole ones, and whoever
// writes them is never held up or hurt.

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

#include "SystemFault.h"
#include "compositions/archive/TempFolder.h"
#include "helpers/tracer/service/TraceService.h"
#include "platform/SettingsStore.h"
#include "platform/SharedMemory.h"
#include "platform/Thread.h"

namespace {

using helpers::TraceService;
using test_support::Fate;
using test_support::ForEachCall;
using test_support::SystemCall;
using test_support::SystemFault;

constexpr int kLines = 900;  // more than a buffer holds

std::wstring g_folder;

helpers::LogNames NamesOfTheTest(const std::wstring&) {
    return {{{g_folder + L"/Logs", g_folder + L"/Logs/test.log"}, {L"", g_folder + L"/test.log"}},
            "program\n"};
}

class TracerFault : public testing::Test {
protected:
    TracerFault() {
        constexpr wchar_t kKey[] = L"Software\\Tesmar\\Commons\\Log";
        test_platform::ResetSettings();
        for (const wchar_t* name : {L"Enabled", L"Level"}) {
            test_platform::PutValue(kKey, name, test_platform::ValueKind::kNumber,
                                    test_platform::NumberBytes(2));
        }
        g_folder = TempFolder::WidePath(folder_.Path());
        system_.makeNames = &NamesOfTheTest;
    }

    // A tracer's whole life. False when it could not have its event.
    bool Run() {
        const auto layout = std::make_unique<helpers::TracerLayout>();
        helpers::Tracer tracer(*layout);
        TraceService service(*layout, system_);
        try {
            service.Construct();
        } catch (const helpers::Event::EventException&) {
            return false;
        }
        for (int i = 0; i < kLines; ++i) {
            tracer.Write(2, L"line " + std::to_wstring(i) + L" of some length, and its end");
        }
        service.Stop();
        return true;
    }

    // The numbers of the lines in that log; every line is whole.
    static std::vector<int> Numbers(const std::filesystem::path& file) {
        std::vector<int> numbers;
        std::istringstream stream(ReadBytes(file));
        for (std::string line; std::getline(stream, line);) {
            const std::size_t text = line.find("] line ");
            if (text == std::string::npos) {
                EXPECT_TRUE(line == "program" || line.find("failed to created") < line.size())
                    << line;
                continue;
            }
            numbers.push_back(std::atoi(line.c_str() + text + 7));
            EXPECT_EQ(line.substr(text + 2),
                      "line " + std::to_string(numbers.back()) + " of some length, and its end");
        }
        EXPECT_FALSE(stream.bad());
        return numbers;
    }

    // Returns how many lines there are in whichever log there is; they are in order, each once.
    std::size_t CountLines() {
        std::size_t count = 0;
        for (const char* name : {"Logs/test.log", "test.log"}) {
            const std::vector<int> numbers = Numbers(folder_ / name);
            EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
            EXPECT_EQ(std::adjacent_find(numbers.begin(), numbers.end()), numbers.end());
            count += numbers.size();
            std::filesystem::remove(folder_ / name);
        }
        std::filesystem::remove(folder_ / "Logs");
        return count;
    }

    void RunUnder(SystemCall call, Fate fate, bool losesNothing) {
        ForEachCall([&](int nth, bool lasts) {
            bool happened = false;
            {
                const SystemFault fault(call, nth, lasts, fate);
                Run();
                happened = fault.Happened();
            }
            const std::size_t count = CountLines();
            if (!happened || losesNothing) {
                EXPECT_EQ(count, std::size_t{kLines});
            }
            // How often a log is written depends on how its thread runs: enough is enough.
            return happened && nth < 40;
        });
        EXPECT_TRUE(Run());
        EXPECT_EQ(CountLines(), std::size_t{kLines}) << "the next run";
    }

    TempFolder folder_;
    helpers::TraceSystem system_;
};

TEST_F(TracerFault, RefusedEventOrThreadCostsTheLogAlone) {
    for (const SystemCall call : {SystemCall::kEvent, SystemCall::kThread}) {
        const int calls = ForEachCall([&](int nth, bool lasts) {
            bool happened = false;
            bool constructed = false;
            {
                const SystemFault fault(call, nth, lasts);
                constructed = Run();
                happened = fault.Happened();
            }
            EXPECT_EQ(constructed, !happened || call == SystemCall::kThread);
            EXPECT_EQ(CountLines(), happened ? 0u : std::size_t{kLines});
            return happened;
        });
        EXPECT_EQ(calls, 1);
    }
}

TEST_F(TracerFault, FileThatCannotBeMadeIsMadeInTheNextPlaceOrNotAtAll) {
    RunUnder(SystemCall::kOpen, Fate::kFails, false);
    RunUnder(SystemCall::kMove, Fate::kFails, true);
}

TEST_F(TracerFault, WritesThatFailLoseWholeLines) {
    RunUnder(SystemCall::kWrite, Fate::kFails, false);
    RunUnder(SystemCall::kWrite, Fate::kEnds, false);
    RunUnder(SystemCall::kWrite, Fate::kShort, true);
}

TEST_F(TracerFault, SettingsThatCannotBeReadLeaveTheLogOff) {
    RunUnder(SystemCall::kRead, Fate::kFails, false);
}

TEST(SharedMemoryFault, MemoryThatCannotBeMadeLeavesNothingBehind) {
    using Outcome = platform::SharedMemory::Outcome;
    constexpr std::size_t kBytes = 10'000;
    const std::string name = "TarnexFaults_" + std::to_string(platform::CurrentProcessId());
    for (const SystemCall call : {SystemCall::kMemory, SystemCall::kLook}) {
        const int calls = ForEachCall([&](int nth, bool lasts) {
            platform::SharedMemory memory;
            std::uint32_t error = 0;
            Outcome outcome = Outcome::kMissing;
            bool happened = false;
            {
                const SystemFault fault(call, nth, lasts);
                outcome = memory.Attach(name, true, kBytes, error);
                happened = fault.Happened();
            }
            EXPECT_EQ(outcome, happened ? Outcome::kFailed : Outcome::kCreated);
            EXPECT_EQ(memory.Data() != nullptr, !happened);
            memory.Close(true);
            // Nobody finds one that was made halfway.
            platform::SharedMemory next;
            EXPECT_EQ(next.Attach(name, true, kBytes, error), Outcome::kCreated);
            next.Close(true);
            return happened;
        });
        EXPECT_GT(calls, 0);
    }
}

}  // namespace
