// Which libraries a file list loads.

#include <gmock/gmock.h>

#include <fstream>

#include "host/HostSession.h"

namespace host_test {
namespace {

using testing::IsEmpty;

class PluginLoading : public HostTest {
protected:
    // The effect count over this list of files in the sandbox.
    std::string Count(const std::string& list) {
        Host host(sandbox_, &log_);
        host.Start(list);
        const std::string count = host.Do({"count"});
        EXPECT_EQ(host.Finish(), 0);
        return count;
    }
};

TEST_F(PluginLoading, NameCountsOnlyWithItsTerminator) {
    sandbox_.AddPlugins({"plain", "other"});
    EXPECT_EQ(Count(""), "0");
    EXPECT_EQ(Count("plain.plugin"), "0");
    EXPECT_EQ(Count("plain.plugin|"), "2");
    EXPECT_EQ(Count("plain.plugin|other.plugin"), "2");
    EXPECT_EQ(Count("plain.plugin|other.plugin|"), "4");
    EXPECT_THAT(sandbox_.LogMessages(), IsEmpty());
}

TEST_F(PluginLoading, ListOrderIsIndexOrder) {
    sandbox_.AddPlugins({"plain", "other"});
    Host host(sandbox_);
    host.Start("other.plugin|plain.plugin|");
    EXPECT_EQ(host.Do({"list"}),
              "0\n0 4 1 on other.first\n1 4 1 on other.second\n"
              "2 4 1 on plain.first\n3 4 1 on plain.second");
}

TEST_F(PluginLoading, EmptyNamesAreTriedAndPassedOver) {
    sandbox_.AddPlugins({"plain"});
    EXPECT_EQ(Count("|||plain.plugin||"), "2");
    EXPECT_THAT(sandbox_.LogMessages(), IsEmpty());
}

TEST_F(PluginLoading, SameFileTwiceOffersItsEffectsTwice) {
    sandbox_.AddPlugins({"plain"});
    Host host(sandbox_);
    host.Start("plain.plugin|plain.plugin|");
    EXPECT_EQ(host.Do({"list"}),
              "0\n0 4 1 on plain.first\n1 4 1 on plain.second\n"
              "2 4 1 on plain.first\n3 4 1 on plain.second");
}

TEST_F(PluginLoading, NamesMayHavePathParts) {
    sandbox_.AddPlugins({"plain"}, "inner");
    sandbox_.AddPlugins({"other"});
    EXPECT_EQ(Count("inner\\plain.plugin|inner\\..\\other.plugin|"), "4");
}

TEST_F(PluginLoading, NamesAreTakenAsTheyStand) {
    sandbox_.AddPlugins({"plain"});
    EXPECT_EQ(Count(" plain.plugin|plain|\"plain.plugin\"|"), "0");
}

TEST_F(PluginLoading, FolderMayHaveSpacesAndForeignLetters) {
    const std::string folder = "my pl\xC3\xBCgins \xD1\x8D\xD1\x84\xD1\x84 \xE5\x8A\xB9";
    const std::string list = sandbox_.AddPlugins({"plain"}, folder);
    Host host(sandbox_);
    host.Do({"load", Utf8(sandbox_.Folder() / test_support::kTarnexFile)});
    host.Do({"get"});
    EXPECT_EQ(host.Do({"factory", Utf8(sandbox_.Folder()) + "/" + folder, list, ""}), "0 set");
    EXPECT_EQ(host.Do({"count"}), "2");
}

TEST_F(PluginLoading, TenThousandNamesAreAllTried) {
    sandbox_.AddPlugins({"plain"});
    std::string list;
    for (int i = 0; i < 9999; ++i) {
        list += "absent" + std::to_string(i) + ".plugin|";
    }
    EXPECT_EQ(Count(list + "plain.plugin|"), "2");
    EXPECT_THAT(sandbox_.LogMessages(), IsEmpty());
}

TEST_F(PluginLoading, NameOfFortyThousandCharactersIsPassedOver) {
    sandbox_.AddPlugins({"plain"});
    EXPECT_EQ(Count(std::string(40000, 'x') + "|plain.plugin|"), "2");
    EXPECT_THAT(sandbox_.LogMessages(), IsEmpty());
}

TEST_F(PluginLoading, EmptyDirectoryAndListGiveAValidEmptyFactory) {
    Host host(sandbox_, &log_);
    host.Do({"load", Utf8(sandbox_.Folder() / test_support::kTarnexFile)});
    host.Do({"get"});
    EXPECT_EQ(host.Do({"factory", "", "", ""}), "0 set");
    EXPECT_EQ(host.Do({"count"}), "0");
    EXPECT_EQ(host.Do({"list"}), "0");
    EXPECT_EQ(host.Do({"name", "0"}), "<>");
    EXPECT_EQ(host.Do({"create", "0"}), "9 empty");
}

TEST_F(PluginLoading, LibraryWithoutTheEntryIsPassedOver) {
    sandbox_.AddPlugins({"plain", "no_entry"});
    EXPECT_EQ(Count("no_entry.plugin|plain.plugin|"), "2");
    EXPECT_THAT(sandbox_.LogMessages(), IsEmpty());
}

TEST_F(PluginLoading, FileThatIsNoLibraryIsPassedOver) {
    sandbox_.AddPlugins({"plain"});
    std::ofstream(sandbox_.Folder() / "text.plugin") << "MZ this is no library\n";
    std::ofstream(sandbox_.Folder() / "empty.plugin").flush();
    std::filesystem::create_directory(sandbox_.Folder() / "folder.plugin");
    EXPECT_EQ(Count("text.plugin|empty.plugin|folder.plugin|plain.plugin|"), "2");
    EXPECT_THAT(sandbox_.LogMessages(), IsEmpty());
}

TEST_F(PluginLoading, BeginningOfALibraryIsPassedOver) {
    sandbox_.AddPlugins({"plain", "other"});
    const auto file = sandbox_.Folder() / "other.plugin";
    std::filesystem::resize_file(file, 60);  // behind that, some systems' loaders crash
    EXPECT_EQ(Count("other.plugin|plain.plugin|"), "2");
}

TEST_F(PluginLoading, LibraryWithoutItsDependencyIsPassedOver) {
    sandbox_.AddPlugins({"plain", "needs_library"});
    EXPECT_EQ(Count("needs_library.plugin|plain.plugin|"), "2");
    EXPECT_THAT(sandbox_.LogMessages(), IsEmpty());
}

TEST_F(PluginLoading, DependenciesAreFoundBesideThePlugin) {
    sandbox_.AddPlugins({"needs_library"}, "inner");
    for (const auto& file : std::filesystem::directory_iterator(sandbox_.PluginSource("needed"))) {
        std::filesystem::copy(file.path(), sandbox_.Folder() / "inner" / file.path().filename());
    }
    EXPECT_EQ(Count("inner\\needs_library.plugin|"), "1");
}

}  // namespace
}  // namespace host_test
