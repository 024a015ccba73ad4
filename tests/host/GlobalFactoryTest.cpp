// The global factory over plug-ins that work.

#include <gmock/gmock.h>

#include "host/HostSession.h"

namespace host_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string Named(const std::string& operation, const std::string& error) {
    return "Operation \"tarnex::GlobalFXFactory::" + operation + "\" returned error <" + error +
           ">";
}

class GlobalFactory : public HostTest {
protected:
    GlobalFactory() : host_(sandbox_, &log_) {
        host_.Start(sandbox_.AddPlugins({"plain", "other"}));
    }

    std::vector<std::string> LogAfterwards() {
        EXPECT_EQ(host_.Finish(), 0);
        return sandbox_.LogMessages();
    }

    Host host_;
};

TEST_F(GlobalFactory, CountsNamesAndCreatesByGlobalIndex) {
    EXPECT_EQ(host_.Do({"count"}), "4");
    EXPECT_EQ(host_.Do({"name", "0"}), "<plain.first>");
    EXPECT_EQ(host_.Do({"name", "3"}), "<other.second>");
    EXPECT_EQ(host_.Do({"create", "0"}), "0 set plain.first");
    EXPECT_EQ(host_.Do({"create", "3"}), "0 set other.second");
    EXPECT_THAT(LogAfterwards(), IsEmpty());
}

TEST_F(GlobalFactory, IndexOutOfRangeHasNoNameAndIsRefused) {
    host_.Do({"keep", "0"});
    EXPECT_EQ(host_.Do({"name", "4"}), "<>");
    EXPECT_EQ(host_.Do({"create", "4"}), "9 set untouched");
    EXPECT_THAT(LogAfterwards(), ElementsAre(Named("CreateFX", "eWrongFXIdx")));
}

TEST_F(GlobalFactory, IndexIsNotCutToThirtyTwoBits) {
    EXPECT_EQ(host_.Do({"name", "4294967296"}), "<>");
    EXPECT_EQ(host_.Do({"create", "4294967296"}), "9 empty");
    EXPECT_EQ(host_.Do({"create", "18446744073709551615"}), "9 empty");
    EXPECT_THAT(LogAfterwards(),
                ElementsAre(Named("CreateFX", "eWrongFXIdx"), Named("CreateFX", "eWrongFXIdx")));
}

TEST_F(GlobalFactory, RemovedEffectStaysListedAndCanBeCreated) {
    EXPECT_EQ(host_.Do({"remove", "plain.second"}), "0");
    EXPECT_EQ(host_.Do({"list"}),
              "0\n0 4 1 on plain.first\n1 4 1 off plain.second\n"
              "2 4 1 on other.first\n3 4 1 on other.second");
    EXPECT_EQ(host_.Do({"count"}), "4");
    EXPECT_EQ(host_.Do({"create", "1"}), "0 set plain.second");
    EXPECT_EQ(host_.Do({"remove", "plain.second"}), "0");
    EXPECT_THAT(LogAfterwards(), IsEmpty());
}

TEST(EqualNames, RemovalMarksTheFirstOfThemOnly) {
    Sandbox sandbox;
    Host host(sandbox);
    sandbox.AddPlugins({"plain"});
    host.Start("plain.plugin|plain.plugin|");
    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(host.Do({"remove", "plain.first"}), "0");
        EXPECT_EQ(host.Do({"list"}),
                  "0\n0 4 1 off plain.first\n1 4 1 on plain.second\n"
                  "2 4 1 on plain.first\n3 4 1 on plain.second");
    }
}

TEST_F(GlobalFactory, RemovingAnUnknownNameIsReported) {
    EXPECT_EQ(host_.Do({"remove", "Plain.first"}), "5");
    EXPECT_EQ(host_.Do({"remove", "plain.firs"}), "5");
    EXPECT_EQ(host_.Do({"remove", ""}), "5");
    const std::string line = Named("RemoveEffect", "eWrongFXName");
    EXPECT_THAT(LogAfterwards(), ElementsAre(line, line, line));
}

TEST_F(GlobalFactory, PathThatIsNoCompositionIsRefusedAndLeavesThePointer) {
    host_.Do({"keep", "0"});
    EXPECT_EQ(host_.Do({"create_path", "no such file"}), "12 set untouched");
    EXPECT_THAT(LogAfterwards(),
                ElementsAre("Operation \"compositions::CompositionFactory::CreateFX\" returned "
                            "error <eCouldNotCreateFX>"));
}

TEST_F(GlobalFactory, RegisteringWhatCannotBeReadIsReported) {
    EXPECT_EQ(host_.Do({"register", "no such file", "path"}), "3");
    EXPECT_EQ(host_.Do({"register", "", "name"}), "3");
    EXPECT_EQ(host_.Do({"count"}), "4");
    const std::string line = Named("RegisterEffect", "eCouldNotRegisterNewComposition");
    EXPECT_THAT(LogAfterwards(), ElementsAre(line, line));
}

TEST(EmptyGlobalFactory, ReplacesTheListByNothing) {
    Sandbox sandbox;
    Host host(sandbox);
    host.Start("");
    EXPECT_EQ(host.Do({"list"}), "0");
    EXPECT_EQ(host.Finish(), 0);
}

}  // namespace
}  // namespace host_test
