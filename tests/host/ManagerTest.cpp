// The manager's life in a process, and who owns it when several processes load the library.

#include <gmock/gmock.h>

#include "host/HostSession.h"

namespace host_test {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr char kRefused[] =
    "Operation \"tarnex::GetTarnex\" returned error <eTarnexLockedByOtherProcess>";

class Manager : public HostTest {
protected:
    std::string Load(Host& host) {
        return host.Do({"load", Utf8(sandbox_.Folder() / test_support::kTarnexFile)});
    }

    // The witness says when anything of it is destroyed, its effect at start-up to begin with.
    void StartWithWitness(Host& host) {
        const std::string list = sandbox_.AddPlugins({"witness", "plain"});
        Load(host);
        host.Do({"get"});
        EXPECT_EQ(host.Do({"factory", Utf8(sandbox_.Folder()), list, ""}),
                  "witness: effect destroyed\n0 set");
    }
};

TEST_F(Manager, FirstProcessGetsTheSameManagerEveryTime) {
    Host host(sandbox_, &log_);
    EXPECT_EQ(Load(host), "loaded");
    EXPECT_EQ(host.Do({"get"}), "0 set");
    EXPECT_EQ(host.Do({"get"}), "0 set same");
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_THAT(sandbox_.LogMessages(), IsEmpty());
}

TEST_F(Manager, SecondProcessIsRefusedWithSuccessAndOneLogLine) {
    Host first(sandbox_);
    EXPECT_EQ(Load(first), "loaded");
    EXPECT_EQ(first.Do({"get"}), "0 set");

    Host second(sandbox_, &log_);
    EXPECT_EQ(Load(second), "loaded");
    EXPECT_EQ(second.Do({"get"}), "0 empty");
    EXPECT_EQ(second.Finish(), 0);
    EXPECT_THAT(sandbox_.LogMessages(), ElementsAre(kRefused));

    EXPECT_EQ(first.Do({"get"}), "0 set same");
    EXPECT_EQ(first.Finish(), 0);
}

TEST_F(Manager, RefusedProcessStaysRefusedAfterTheOwnerHasEnded) {
    auto owner = std::make_unique<Host>(sandbox_);
    EXPECT_EQ(Load(*owner), "loaded");
    Host second(sandbox_, &log_);
    EXPECT_EQ(Load(second), "loaded");
    EXPECT_EQ(owner->Finish(), 0);
    EXPECT_EQ(second.Do({"get"}), "0 empty");

    Host third(sandbox_);
    EXPECT_EQ(Load(third), "loaded");
    EXPECT_EQ(third.Do({"get"}), "0 empty") << "the second process still has the library loaded";
    EXPECT_EQ(third.Finish(), 0);
    EXPECT_EQ(second.Finish(), 0);
    // One line of each, unless both opened their log within the same second.
    EXPECT_THAT(sandbox_.LogMessages(), AllOf(Not(IsEmpty()), Each(kRefused)));
}

TEST_F(Manager, ProcessAfterAllHaveEndedIsOwnerAgain) {
    for (int round = 0; round < 3; ++round) {
        Host owner(sandbox_);
        EXPECT_EQ(Load(owner), "loaded");
        EXPECT_EQ(owner.Do({"get"}), "0 set");
        Host refused(sandbox_);
        EXPECT_EQ(Load(refused), "loaded");
        EXPECT_EQ(refused.Do({"get"}), "0 empty");
        EXPECT_EQ(refused.Finish(), 0);
        EXPECT_EQ(owner.Finish(), 0);
    }
}

TEST_F(Manager, ProcessThatWasKilledLeavesTheNextOneOwner) {
    Host killed(sandbox_);
    EXPECT_EQ(Load(killed), "loaded");
    EXPECT_EQ(killed.Do({"get"}), "0 set");
    killed.Kill();
    killed.Finish();

    Host next(sandbox_);
    EXPECT_EQ(Load(next), "loaded");
    EXPECT_EQ(next.Do({"get"}), "0 set");
}

TEST_F(Manager, UnloadingTheLibraryLeavesTheNextProcessOwner) {
    Host first(sandbox_);
    EXPECT_EQ(Load(first), "loaded");
    EXPECT_EQ(first.Do({"get"}), "0 set");
    first.Do({"unload"});

    Host second(sandbox_);
    EXPECT_EQ(Load(second), "loaded");
    EXPECT_EQ(second.Do({"get"}), "0 set");

    EXPECT_EQ(Load(first), "loaded");
    EXPECT_EQ(first.Do({"get"}), "0 empty") << "it came second this time";
}

TEST_F(Manager, FirstFactoryIsHandedOutWhateverLaterCallsPass) {
    const std::string plugins = sandbox_.AddPlugins({"plain", "other"});
    Host host(sandbox_, &log_);
    host.Start("plain.plugin|");
    EXPECT_EQ(host.Do({"factory", "elsewhere", "other.plugin|", ""}), "0 set same");
    EXPECT_EQ(host.Do({"count"}), "2");
    EXPECT_EQ(host.Do({"name", "0"}), "<plain.first>");
}

TEST_F(Manager, ProcessEndRunsNoPluginCode) {
    Host host(sandbox_, &log_);
    StartWithWitness(host);
    EXPECT_EQ(host.Do({"create", "0"}), "0 set witness\nwitness: effect destroyed");
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_EQ(host.Rest(), "");
}

TEST_F(Manager, ExitInTheMiddleRunsNoPluginCode) {
    Host host(sandbox_, &log_);
    StartWithWitness(host);
    host.Do({"quit"});
    EXPECT_EQ(host.Finish(), 0);
    EXPECT_EQ(host.Rest(), "");
}

}  // namespace
}  // namespace host_test
