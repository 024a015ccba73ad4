// Two processes that load the library at the same instant, over and over: at least one of them owns
// the manager, and nobody falls over. Both may: the flag is tested and then set.

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>

#include "host/HostSession.h"

namespace host_test {
namespace {

using testing::AnyOf;

constexpr int kLongRounds = 500;

int Rounds(int shortRounds) {
    return std::getenv("TARNEX_LONG_TESTS") != nullptr ? kLongRounds : shortRounds;
}

class OwnershipRace : public HostTest {
protected:
    // Has both load the library at once and counts its owners.
    int Race(Host& first, Host& second) {
        const auto time = std::chrono::system_clock::now().time_since_epoch() +
                          std::chrono::milliseconds(kLeadMs);
        const std::string at =
            std::to_string(std::chrono::duration_cast<std::chrono::microseconds>(time).count());
        for (Host* host : {&first, &second}) {
            host->Send({"load_at", Utf8(sandbox_.Folder() / test_support::kTarnexFile), at});
        }
        int owners = 0;
        for (Host* host : {&first, &second}) {
            std::string line;
            EXPECT_TRUE(host->NextLine(line) && line == "loaded") << line;
            EXPECT_TRUE(host->NextLine(line) && line == ".") << line;
        }
        for (Host* host : {&first, &second}) {
            const std::string answer = host->Do({"get"});
            EXPECT_THAT(answer, AnyOf("0 set", "0 empty"));
            if (answer == "0 set") ++owners;
        }
        return owners;
    }

    // Enough for both to have read their line.
    static constexpr int kLeadMs = 2;
};

TEST_F(OwnershipRace, OfTwoProcessesThatStartAtOnceOneOrBothAreOwners) {
    int both = 0;
    const int rounds = Rounds(TARNEX_RACING_PROCESSES);
    for (int round = 0; round < rounds; ++round) {
        Host first(sandbox_);
        Host second(sandbox_);
        first.Do({"drop"});  // both are up
        second.Do({"drop"});
        const int owners = Race(first, second);
        ASSERT_GE(owners, 1) << "round " << round;
        if (owners == 2) ++both;
        ASSERT_EQ(first.Finish(), 0) << "round " << round;
        ASSERT_EQ(second.Finish(), 0) << "round " << round;
    }
    RecordProperty("rounds", rounds);
    RecordProperty("both", both);
}

TEST_F(OwnershipRace, OfTwoProcessesThatLoadAndUnloadAtOnceOneOrBothAreOwners) {
    Host first(sandbox_);
    Host second(sandbox_);
    int both = 0;
    const int rounds = Rounds(TARNEX_RACING_LOADS);
    for (int round = 0; round < rounds; ++round) {
        const int owners = Race(first, second);
        ASSERT_GE(owners, 1) << "round " << round;
        if (owners == 2) ++both;
        first.Do({"unload"});
        second.Do({"unload"});
    }
    EXPECT_EQ(first.Finish(), 0);
    EXPECT_EQ(second.Finish(), 0);
    RecordProperty("rounds", rounds);
    RecordProperty("both", both);
}

TEST_F(OwnershipRace, ProcessesThatComeAndGoDisturbNeitherTheOwnerNorItsLog) {
    sandbox_.AddPlugins({"plain"});
    Host owner(sandbox_, &log_);
    owner.Start("plain.plugin|");
    // Visitors say nothing: they would in the same folder, and perhaps in a log of the same second.
    const test_support::ScopedLogSettings silent({.enabled = 0}, sandbox_.Folder());
    constexpr int kVisits = 5;
    for (int visit = 0; visit < kVisits; ++visit) {
        Host visitor(sandbox_, &silent);
        EXPECT_EQ(visitor.Do({"load", Utf8(sandbox_.Folder() / test_support::kTarnexFile)}),
                  "loaded");
        EXPECT_EQ(visitor.Do({"get"}), "0 empty");
        EXPECT_EQ(owner.Do({"create", "0"}), "0 set plain.first");
        EXPECT_EQ(owner.Do({"remove", "nobody"}), "5");
        if (visit % 2 == 0) {
            visitor.Do({"unload"});
        } else {
            visitor.Kill();
        }
        visitor.Finish();
        EXPECT_EQ(owner.Do({"get"}), "0 set same");
        EXPECT_EQ(owner.Do({"count"}), "2");
    }
    EXPECT_EQ(owner.Finish(), 0);
    EXPECT_THAT(sandbox_.LogMessages(),
                testing::ContainerEq(std::vector<std::string>(
                    kVisits,
                    "Operation \"tarnex::GlobalFXFactory::RemoveEffect\" returned error "
                    "<eWrongFXName>")));
}

}  // namespace
}  // namespace host_test
