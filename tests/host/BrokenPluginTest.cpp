// What each way in which a plug-in can be broken costs, and what it does not.

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "host/HostSession.h"

namespace host_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kNotValid[] =
    "Operation \"tarnex::GlobalFXFactory::CreateFX\" returned error <eInvalidFxFactoryObject>";

std::string Unowned() {
    return "Operation \"tarnex::GlobalFXFactory::InternalCreateFX\" returned error "
           "<eCouldNotCreateFX>";
}

class BrokenPlugin : public HostTest {
protected:
    BrokenPlugin() : host_(sandbox_, &log_) {}

    std::vector<std::string> LogAfterwards() {
        EXPECT_EQ(host_.Finish(), 0);
        return sandbox_.LogMessages();
    }

    void ExpectSkipped(const std::string& plugin) {
        host_.Start(sandbox_.AddPlugins({plugin, "plain"}));
        EXPECT_EQ(host_.Do({"list"}), "0\n0 4 1 on plain.first\n1 4 1 on plain.second");
        EXPECT_THAT(LogAfterwards(), IsEmpty());
    }

    void ExpectNotValid(const std::string& list, const std::string& recordsBuilt) {
        host_.Start(list);
        EXPECT_EQ(host_.Do({"count"}), "0");
        EXPECT_EQ(host_.Do({"name", "0"}), "<>");
        EXPECT_EQ(host_.Do({"create", "0"}), "8 empty");
        EXPECT_EQ(host_.Do({"create", "100"}), "8 empty");
        EXPECT_EQ(host_.Do({"create_path", "anything"}), "8 empty");
        EXPECT_EQ(host_.Do({"list"}), recordsBuilt);
        EXPECT_EQ(host_.Do({"factory", "", "", ""}), "0 set same");
    }

    // A plug-in that throws once a host asks for its effect: expects code, log and debugger lines.
    void ExpectThrown(const std::string& plugin, const std::string& code, const std::string& error,
                      const std::string& shownCode) {
        host_.Start(sandbox_.AddPlugins({"plain", plugin}));
        host_.Do({"keep", "0"});
        EXPECT_EQ(host_.Do({"create", "2"}), code + " empty");
        EXPECT_EQ(host_.Do({"create", "1"}), "0 set plain.second");
        EXPECT_THAT(LogAfterwards(), ElementsAre("Operation returned error <" + error + ">"));
        EXPECT_THAT(sandbox_.DebugLines(), ElementsAre("Exception catched: (" + shownCode +
                                                       ") file: GlobalFxFactory, line: (199) name: "
                                                       "tarnex::GlobalFXFactory::CreateFX"));
    }

    Host host_;
};

TEST_F(BrokenPlugin, EntryThatReturnsAnErrorIsSkippedSilently) {
    ExpectSkipped("entry_fails");
}

TEST_F(BrokenPlugin, EntryThatLeavesThePointerEmptyIsSkippedSilently) {
    ExpectSkipped("entry_empty");
}

TEST_F(BrokenPlugin, EntryThatThrowsLeavesTheFactoryNotValid) {
    ExpectNotValid(sandbox_.AddPlugins({"plain", "entry_throws"}), "0");
    EXPECT_EQ(host_.Do({"register", "anything", "path"}), "3")
        << "the throw came before the composition factory was made";
    EXPECT_EQ(host_.Do({"remove", "plain.first"}), "5");
    EXPECT_THAT(LogAfterwards(),
                ElementsAre(kNotValid, kNotValid, kNotValid,
                            "Operation \"tarnex::GlobalFXFactory::RegisterEffect\" returned error "
                            "<eCouldNotRegisterNewComposition>",
                            "Operation \"tarnex::GlobalFXFactory::RemoveEffect\" returned error "
                            "<eWrongFXName>"));
}

TEST_F(BrokenPlugin, EffectThatThrowsAtStartLeavesTheFactoryNotValidWithWhatWasBuilt) {
    ExpectNotValid(sandbox_.AddPlugins({"plain", "throws_at_start", "other"}),
                   "0\n0 4 1 on plain.first\n1 4 1 on plain.second");
    EXPECT_EQ(host_.Do({"remove", "plain.first"}), "0") << "removing asks for no validity";
    EXPECT_THAT(LogAfterwards(), ElementsAre(kNotValid, kNotValid, kNotValid));
}

TEST_F(BrokenPlugin, FactoryThatIsNotValidRegistersAndRemovesCompositions) {
    host_.Start(sandbox_.AddPlugins({"plain", "throws_at_start"}));
    std::filesystem::create_directory(sandbox_.Folder() / "compositions");
    std::ofstream(sandbox_.Folder() / "compositions" / "blur.txt")
        << "[SETUP]\nNAME = \"Blur\"\nCATEGORY = \"Basic\"\n[SOURCES]\nBack = INPUT\n[EFFECTS]\n"
           "B = \"x\"\n[STRUCTURE]\nOUTPUT = B( Back )\n";
    EXPECT_EQ(host_.Do({"register", "blur.txt", "name"}), "0");
    EXPECT_EQ(host_.Do({"register", "blur.txt", "name"}), "3");
    EXPECT_EQ(host_.Do({"remove", "Blur\\Basic"}), "0");
    EXPECT_EQ(host_.Do({"list"}),
              "0\n0 4 1 on plain.first\n1 4 1 on plain.second\n3 130 1 off Blur\\Basic");
    EXPECT_EQ(host_.Do({"register", "blur.txt", "name"}), "0");
    EXPECT_EQ(host_.Do({"count"}), "0");
    EXPECT_EQ(host_.Do({"create", "3"}), "8 empty");
}

TEST_F(BrokenPlugin, CountThatShrinksLeavesIndexesThatNobodyOwns) {
    host_.Start(sandbox_.AddPlugins({"count_changes"}));
    EXPECT_EQ(host_.Do({"count"}), "3");
    EXPECT_EQ(host_.Do({"list"}), "0\n0 4 1 on shrinking.only");
    EXPECT_EQ(host_.Do({"name", "2"}), "<>");
    EXPECT_EQ(host_.Do({"create", "2"}), "12 empty");
    EXPECT_THAT(LogAfterwards(), ElementsAre(Unowned(), Unowned(), Unowned()));
}

TEST_F(BrokenPlugin, CountThatShrinksMovesTheIndexesBehindIt) {
    host_.Start(sandbox_.AddPlugins({"count_changes", "plain"}));
    EXPECT_EQ(host_.Do({"count"}), "5");
    EXPECT_EQ(host_.Do({"list"}),
              "0\n0 4 1 on shrinking.only\n1 4 1 on plain.first\n2 4 1 on plain.second");
    EXPECT_EQ(host_.Do({"name", "1"}), "<plain.first>");
    EXPECT_THAT(LogAfterwards(), ElementsAre(Unowned(), Unowned()));
}

TEST_F(BrokenPlugin, EffectThatCannotBeCreatedHasNoRecordAndItsCodeComesBack) {
    host_.Start(sandbox_.AddPlugins({"create_fails"}));
    EXPECT_EQ(host_.Do({"count"}), "3");
    EXPECT_EQ(host_.Do({"list"}), "0\n0 4 1 on failing.first\n2 4 1 on failing.last");
    host_.Do({"keep", "0"});
    EXPECT_EQ(host_.Do({"create", "1"}), "4 empty");
    EXPECT_EQ(host_.Do({"create", "2"}), "0 set failing.last");
    EXPECT_THAT(LogAfterwards(), IsEmpty()) << "reporting it is the plug-in's business";
}

TEST_F(BrokenPlugin, EffectExceptionGivesItsCode) {
    ExpectThrown("throws_fx", "171", "eResolutionTooBig", "171");
}

TEST_F(BrokenPlugin, StandardExceptionGivesTheGenericCode) {
    ExpectThrown("throws_std", "10", "eGenericException", "...");
}

TEST_F(BrokenPlugin, ThrownNumberGivesTheGenericCode) {
    ExpectThrown("throws_int", "10", "eGenericException", "...");
}

TEST_F(BrokenPlugin, ManagerExceptionIsNoneOfTheEffectOnes) {
    ExpectThrown("throws_tarnex", "10", "eGenericException", "...");
}

TEST_F(BrokenPlugin, EffectWithoutDescriptorHasNoRecordAndCanBeCreated) {
    host_.Start(sandbox_.AddPlugins({"null_descriptor", "plain"}));
    EXPECT_EQ(host_.Do({"list"}), "0\n1 4 1 on plain.first\n2 4 1 on plain.second");
    EXPECT_EQ(host_.Do({"create", "0"}), "0 set");
    EXPECT_THAT(LogAfterwards(), IsEmpty());
}

TEST_F(BrokenPlugin, EmptyHandedCreationHasNoRecord) {
    host_.Start(sandbox_.AddPlugins({"null_effect", "plain"}));
    EXPECT_EQ(host_.Do({"list"}), "0\n1 4 1 on plain.first\n2 4 1 on plain.second");
    EXPECT_EQ(host_.Do({"create", "0"}), "0 empty");
    EXPECT_THAT(LogAfterwards(), IsEmpty());
}

TEST_F(BrokenPlugin, EmptyNameIsANameLikeAnyOther) {
    host_.Start(sandbox_.AddPlugins({"empty_name"}));
    EXPECT_EQ(host_.Do({"list"}), "0\n0 4 1 on ");
    EXPECT_EQ(host_.Do({"remove", ""}), "0");
    EXPECT_EQ(host_.Do({"list"}), "0\n0 4 1 off ");
    EXPECT_THAT(LogAfterwards(), IsEmpty());
}

TEST_F(BrokenPlugin, NameThatThrowsIsEmpty) {
    host_.Start(sandbox_.AddPlugins({"name_throws"}));
    EXPECT_EQ(host_.Do({"name", "0"}), "<>");
    EXPECT_EQ(host_.Do({"create", "0"}), "0 set nameless");
    EXPECT_THAT(LogAfterwards(), IsEmpty());
}

}  // namespace
}  // namespace host_test
