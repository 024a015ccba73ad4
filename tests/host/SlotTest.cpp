// Every virtual operation called by its place in the table of the built library's objects.

#include "host/HostSession.h"

namespace host_test {
namespace {

using Slots = HostTest;

TEST_F(Slots, ManagerHasItsOperationFirst) {
    Host host(sandbox_);
    host.Do({"load", Utf8(sandbox_.Folder() / test_support::kTarnexFile)});
    host.Do({"get"});
    EXPECT_EQ(host.Do({"manager_slots"}), "0 0 set");
}

TEST_F(Slots, GlobalFactoryHasItsOwnBehindThoseOfEveryFactory) {
    Host host(sandbox_, &log_);
    host.Start(sandbox_.AddPlugins({"plain"}));
    EXPECT_EQ(host.Do({"factory_slots"}),
              "1 2\n2 plain.first\n3 0 set\n4 5\n5 3\n6 12 empty\nenumerator 1 0 2");
}

TEST_F(Slots, EffectAnswersEveryPropertySlotInItsPlaceAndTheDefaultsBehindThem) {
    Host host(sandbox_);
    host.Start(sandbox_.AddPlugins({"slots"}));
    host.Do({"keep", "0"});
    std::string expected;
    for (int slot = 1; slot <= 24; ++slot) {
        expected += std::to_string(slot) + " " + std::to_string(slot) + "\n";
    }
    EXPECT_EQ(host.Do({"effect_slots"}), expected +
                                             "25 1\n26 2 emptied\n27 2 emptied\n28 2 emptied\n"
                                             "31 2\n32 2\n33 throws not implemented\n34 2\n"
                                             "valid yes");
}

TEST_F(Slots, BareEffectKeepsTheDefaultGetters) {
    Host host(sandbox_);
    host.Start(sandbox_.AddPlugins({"plain"}));
    host.Do({"keep", "0"});
    const std::string answer = host.Do({"effect_slots"});
    EXPECT_NE(answer.find("18 11\n19 11\n20 11\n21 11\n22 11\n23 11\n24 11\n"), std::string::npos)
        << answer;
}

}  // namespace
}  // namespace host_test
