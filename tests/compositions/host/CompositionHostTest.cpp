// Compositions through the built library: registered, listed, created, removed and revived by a
// host that sees the public headers alone.

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>

#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "host/HostSession.h"

namespace host_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string Script(const std::string& name, const std::string& setup = "",
                   const std::string& sources = "Back = INPUT\n") {
    return "[SETUP]\nNAME = \"" + name + "\"\nCATEGORY = \"Basic\"\n" + setup + "[SOURCES]\n" +
           sources + "[EFFECTS]\nB = \"Blur\"\n[STRUCTURE]\nOUTPUT = B( Back )\n";
}

std::string Failed(const std::string& operation, const std::string& error) {
    return "Operation \"" + operation + "\" returned error <" + error + ">";
}

const std::string kFactory = "compositions::CompositionFactory::CreateFX";
const std::string kGlobal = "tarnex::GlobalFXFactory::";

class Compositions : public HostTest {
protected:
    Compositions() : host_(sandbox_, &log_) { std::filesystem::create_directories(Folder()); }

    std::filesystem::path Folder() const { return sandbox_.Folder() / "compositions"; }
    std::string Path(const std::string& name) const {
        return Utf8(Folder() / test_support::PathFromUtf8(name));
    }
    void Put(const std::string& name, const std::string& bytes) {
        std::ofstream(Folder() / test_support::PathFromUtf8(name), std::ios::binary) << bytes;
    }
    // The errors logged by a host that has ended; other lines are the script reader's.
    std::vector<std::string> ErrorsAfterwards() {
        EXPECT_EQ(host_.Finish(), 0);
        std::vector<std::string> lines = sandbox_.LogMessages();
        std::erase_if(lines, [](const auto& line) { return !line.starts_with("Operation"); });
        return lines;
    }

    Host host_;
};

TEST_F(Compositions, NoneIsThereBeforeItIsRegistered) {
    Put("blur.txt", Script("Blur"));
    host_.Start("");
    EXPECT_EQ(host_.Do({"count"}), "0");
    EXPECT_EQ(host_.Do({"list"}), "0");
    EXPECT_EQ(host_.Do({"create", "0"}), "9 empty");
    EXPECT_THAT(ErrorsAfterwards(), ElementsAre(Failed(kGlobal + "CreateFX", "eWrongFXIdx")));
}

TEST_F(Compositions, RegisteredByNameAreCountedListedAndCreated) {
    Put("blur.txt", Script("Blur", "IS_FILTER = TRUE\n"));
    Put("mix.txt", Script("Mix", "", "Back = INPUT\nFront = INPUT\nThird = 3\n"));
    host_.Start("");
    EXPECT_EQ(host_.Do({"register", "blur.txt", "name"}), "0");
    EXPECT_EQ(host_.Do({"register", "mix.txt", "name"}), "0");
    EXPECT_EQ(host_.Do({"count"}), "2");
    EXPECT_EQ(host_.Do({"list"}), "0\n0 132 1 on Blur\\Basic\n1 130 3 on Mix\\Basic");
    EXPECT_EQ(host_.Do({"name", "1"}), "<Mix\\Basic>");
    EXPECT_EQ(host_.Do({"create", "0"}), "0 set Blur\\Basic");
    EXPECT_EQ(host_.Do({"create", "1"}), "0 set Mix\\Basic");
    EXPECT_THAT(ErrorsAfterwards(), IsEmpty());
}

TEST_F(Compositions, StandBehindTheEffectsOfPlugins) {
    Put("blur.txt", Script("Blur"));
    host_.Start(sandbox_.AddPlugins({"plain"}));
    EXPECT_EQ(host_.Do({"register", Path("blur.txt"), "path"}), "0");
    EXPECT_EQ(host_.Do({"count"}), "3");
    EXPECT_EQ(host_.Do({"name", "2"}), "<Blur\\Basic>");
    EXPECT_EQ(host_.Do({"create", "2"}), "0 set Blur\\Basic");
    EXPECT_EQ(host_.Do({"create", "1"}), "0 set plain.second");
}

TEST_F(Compositions, RegisteringAnEnabledOneAgainIsRefused) {
    Put("blur.txt", Script("Blur"));
    host_.Start("");
    EXPECT_EQ(host_.Do({"register", "blur.txt", "name"}), "0");
    EXPECT_EQ(host_.Do({"register", "blur.txt", "name"}), "3");
    EXPECT_EQ(host_.Do({"count"}), "1");
    EXPECT_THAT(ErrorsAfterwards(),
                ElementsAre(Failed(kGlobal + "RegisterEffect", "eCouldNotRegisterNewComposition")));
}

TEST_F(Compositions, RemovedOneIsRevivedByRegisteringItAgain) {
    Put("blur.txt", Script("Blur"));
    host_.Start("");
    host_.Do({"register", "blur.txt", "name"});
    EXPECT_EQ(host_.Do({"remove", "Blur\\Basic"}), "0");
    EXPECT_EQ(host_.Do({"remove", "Blur\\Basic"}), "0");
    EXPECT_EQ(host_.Do({"list"}), "0\n0 130 1 off Blur\\Basic");
    EXPECT_EQ(host_.Do({"create", "0"}), "0 set Blur\\Basic");
    Put("blur.txt", Script("Edited since"));  // is not read again
    EXPECT_EQ(host_.Do({"register", "blur.txt", "name"}), "0");
    EXPECT_EQ(host_.Do({"list"}), "0\n0 130 1 on Blur\\Basic");
    EXPECT_EQ(host_.Do({"count"}), "1");
    EXPECT_THAT(ErrorsAfterwards(), IsEmpty());
}

TEST_F(Compositions, UnknownNameCannotBeRemoved) {
    host_.Start("");
    EXPECT_EQ(host_.Do({"remove", "Blur\\Basic"}), "5");
    EXPECT_THAT(ErrorsAfterwards(), ElementsAre(Failed(kGlobal + "RemoveEffect", "eWrongFXName")));
}

TEST_F(Compositions, MissingAndFaultyScriptsAreRefused) {
    Put("faulty.txt", "[SETUP]\nNAME = \"Blur\"\n");
    Put("empty.txt", "");
    Put("filter.txt", Script("Blur", "IS_FILTER = TRUE\n", "Back = INPUT\nFront = INPUT\n"));
    host_.Start("");
    for (const char* name : {"none.txt", "faulty.txt", "empty.txt", "filter.txt", ""}) {
        EXPECT_EQ(host_.Do({"register", name, "name"}), "3") << name;
        EXPECT_EQ(host_.Do({"register", Path(name), "path"}), "3") << name;
    }
    EXPECT_EQ(host_.Do({"count"}), "0");
    EXPECT_EQ(ErrorsAfterwards().size(), 10u);
}

TEST_F(Compositions, SecondScriptOfANameCannotBeCreatedByItsIndex) {
    Put("first.txt", Script("Blur"));
    Put("second.txt", Script("Blur", "", "Back = INPUT\nFront = INPUT\n"));
    Put("third.txt", Script("Other"));
    host_.Start("");
    EXPECT_EQ(host_.Do({"register", "first.txt", "name"}), "0");
    EXPECT_EQ(host_.Do({"register", "second.txt", "name"}), "4");
    EXPECT_EQ(host_.Do({"count"}), "2");
    EXPECT_EQ(host_.Do({"list"}), "0\n0 130 1 on Blur\\Basic");
    EXPECT_EQ(host_.Do({"create", "0"}), "0 set Blur\\Basic");
    EXPECT_EQ(host_.Do({"create", "1"}), "12 empty");
    // The same befalls every composition that comes later.
    EXPECT_EQ(host_.Do({"register", "third.txt", "name"}), "4");
    EXPECT_EQ(host_.Do({"count"}), "3");
    EXPECT_EQ(host_.Do({"create", "1"}), "0 set Blur\\Basic");
    EXPECT_EQ(host_.Do({"create", "2"}), "12 empty");
    const std::string noOwner = Failed(kGlobal + "InternalCreateFX", "eCouldNotCreateFX");
    const std::string notCreated = Failed(kGlobal + "RegisterEffect", "eErrorCreatingEffect");
    EXPECT_THAT(ErrorsAfterwards(),
                ElementsAre(noOwner, notCreated, noOwner, noOwner, notCreated, noOwner));
}

TEST_F(Compositions, CreatedByPathAreNotRegistered) {
    Put("blur.txt", Script("Blur"));
    host_.Start("");
    EXPECT_EQ(host_.Do({"create_path", Path("blur.txt")}), "0 set Blur\\Basic");
    EXPECT_EQ(host_.Do({"count"}), "0");
    EXPECT_EQ(host_.Do({"list"}), "0");
    EXPECT_EQ(host_.Do({"register", "blur.txt", "name"}), "0");
}

TEST_F(Compositions, FailedCreationByPathIsLoggedAndLeavesTheOutPointer) {
    Put("blur.txt", Script("Blur"));
    Put("faulty.txt", "[SETUP]\n");
    host_.Start("");
    host_.Do({"register", "blur.txt", "name"});
    host_.Do({"keep", "0"});
    EXPECT_EQ(host_.Do({"create_path", Path("none.txt")}), "12 set untouched");
    EXPECT_EQ(host_.Do({"create_path", Path("faulty.txt")}), "12 set untouched");
    EXPECT_EQ(host_.Do({"create_path", ""}), "12 set untouched");
    const std::string failed = Failed(kFactory, "eCouldNotCreateFX");
    EXPECT_THAT(ErrorsAfterwards(), ElementsAre(failed, failed, failed));
}

TEST_F(Compositions, ArchiveByPathIsReadWhateverItsName) {
    const std::string bytes = plain::Write(samples::Documented()).bytes;
    Put("logo.mxf", bytes);
    Put("logo.txt", bytes);
    host_.Start("");
    EXPECT_EQ(host_.Do({"create_path", Path("logo.mxf")}), "0 set Soft Logo\\Titles");
    EXPECT_EQ(host_.Do({"create_path", Path("logo.txt")}), "0 set Soft Logo\\Titles");
    EXPECT_EQ(host_.Do({"register", "logo.mxf", "name"}), "3");  // scripts alone
}

TEST_F(Compositions, PathsMayBeLongAndHaveAnyLetters) {
    std::string name = "\xC4\x8D\xE4\xB8\xAD \xC3\xA9 blur";
    Put(name + ".txt", Script("Blur"));
    host_.Start("");
    EXPECT_EQ(host_.Do({"create_path", Path(name + ".txt")}), "0 set Blur\\Basic");
    EXPECT_EQ(host_.Do({"register", name + ".txt", "name"}), "0");
    std::string path = Utf8(Folder());
    for (int i = 0; i < 150; ++i) path += "/.";
    EXPECT_GT(path.size(), 300u);
    EXPECT_EQ(host_.Do({"create_path", path + "/" + name + ".txt"}), "0 set Blur\\Basic");
}

TEST_F(Compositions, EitherSeparatorWorks) {
    Put("blur.txt", Script("Blur"));
    host_.Start("");
    std::string path = Path("blur.txt");
    std::replace(path.begin(), path.end(), '/', '\\');
    EXPECT_EQ(host_.Do({"create_path", path}), "0 set Blur\\Basic");
    std::replace(path.begin(), path.end(), '\\', '/');
    EXPECT_EQ(host_.Do({"create_path", path}), "0 set Blur\\Basic");
}

TEST_F(Compositions, AnswerEverySlotAsAFreshEffectDoes) {
    Put("blur.txt", Script("Blur"));
    host_.Start("");
    host_.Do({"register", "blur.txt", "name"});
    host_.Do({"keep", "0"});
    std::string expected = "1 0\n";
    for (int slot = 2; slot <= 23; ++slot) {
        expected += std::to_string(slot) + (slot == 18 ? " 11\n" : " 4\n");
    }
    expected +=
        "24 11\n25 1\n26 2 emptied\n27 2 emptied\n28 2 emptied\n31 2\n32 2\n"
        "33 throws not implemented\n34 2\nvalid no";
    EXPECT_EQ(host_.Do({"effect_slots"}), expected);
    // The set's line names the property, the typed form's says which form it was.
    const auto line = [](const std::string& start, const std::string& end) {
        return "Operation \"" + start + "\" returned error <ePropertyNotFound>" + end;
    };
    const std::string property = ", property: \"no such property\"";
    std::vector<std::string> lines{line("base_types::PropertySet::GetPropertyInfo", property)};
    for (const std::string operation : {"GetProperty", "SetProperty"}) {
        lines.push_back(line("base_types::PropertySet::" + operation, property));  // raw
        for (const char* form : {"std::wstring", "__int64", "bool", "float", "int"}) {
            lines.push_back(line("base_types::PropertySet::" + operation, property));
            lines.push_back(line("PropertySet::" + operation + "<" + form + ">", ""));
        }
    }
    EXPECT_EQ(ErrorsAfterwards(), lines);
}

TEST_F(Compositions, CopyOntoEachOtherAndNotFromAnEffectOfAnotherKind) {
    Put("blur.txt", Script("Blur"));
    host_.Start(sandbox_.AddPlugins({"plain"}));
    host_.Do({"register", "blur.txt", "name"});
    host_.Do({"keep", "2"});
    host_.Do({"keep", "2"});
    EXPECT_EQ(host_.Do({"copy"}), "0");
    host_.Do({"keep", "0"});
    EXPECT_EQ(host_.Do({"copy"}), "11");
    EXPECT_THAT(ErrorsAfterwards(), IsEmpty());
}

TEST_F(Compositions, ReadingAScriptLeavesItsTitleInTheLog) {
    Put("blur.txt", Script("Blur"));
    Put("faulty.txt", "[SETUP]\nNAME = \"Nobody\"\n");
    host_.Start("");
    host_.Do({"register", "blur.txt", "name"});
    host_.Do({"register", "blur.txt", "name"});  // is not read again
    host_.Do({"create", "0"});
    host_.Do({"create_path", Path("faulty.txt")});
    EXPECT_EQ(host_.Finish(), 0);
    EXPECT_THAT(sandbox_.LogMessages(),
                ElementsAre("-----------------", "Blur/Basic", "---------------", "",
                            Failed(kGlobal + "RegisterEffect", "eCouldNotRegisterNewComposition"),
                            Failed(kFactory, "eCouldNotCreateFX")));
}

// What a host that registers a script logs at the level.
std::vector<std::string> LoggedAtLevel(std::uint32_t level) {
    const Sandbox sandbox;
    const test_support::ScopedLogSettings log({.level = level}, sandbox.Folder());
    const std::filesystem::path folder = sandbox.Folder() / "compositions";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "blur.txt", std::ios::binary) << Script("Blur");
    Host host(sandbox, &log);
    host.Start("");
    EXPECT_EQ(host.Do({"register", "blur.txt", "name"}), "0");
    EXPECT_EQ(host.Finish(), 0);
    return sandbox.LogMessages();
}

TEST(CompositionTitle, IsOrdinaryInformation) {
    EXPECT_THAT(LoggedAtLevel(2),
                ElementsAre("-----------------", "Blur/Basic", "---------------", ""));
    EXPECT_THAT(LoggedAtLevel(0xFFFFFFFD), IsEmpty());
}

}  // namespace
}  // namespace host_test
