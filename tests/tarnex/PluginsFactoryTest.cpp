#include "tarnex/PluginsFactory.h"

#include <gmock/gmock.h>

#include "support/Text.h"
#include "tarnex/GlobalFxFactory.h"
#include "tarnex/TestPlugins.h"

namespace tarnex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Loader : public PluginsFactory<PluginEntry> {
public:
    using PluginsFactory::Entries;
    using PluginsFactory::Libraries;
    using PluginsFactory::Load;
    using PluginsFactory::Paths;
};

const std::wstring kEntry = L"CreateFactory";

TEST(PluginsFactory, ListWithoutTerminatorLeavesEverythingEmpty) {
    Loader loader;
    EXPECT_TRUE(loader.Load(PluginFolder(), L"", kEntry));
    EXPECT_TRUE(loader.Load(PluginFolder(), L"plain.plugin", kEntry));
    EXPECT_THAT(loader.Entries(), IsEmpty());
    EXPECT_THAT(loader.Libraries(), IsEmpty());
    EXPECT_THAT(loader.Paths(), IsEmpty());
}

TEST(PluginsFactory, AbsentLibraryLeavesOneEmptyWrapper) {
    Loader loader;
    EXPECT_TRUE(loader.Load(PluginFolder(), L"absent.plugin|", kEntry));
    ASSERT_EQ(loader.Libraries().size(), 1u);
    EXPECT_EQ(loader.Libraries()[0]->Module(), nullptr);
    EXPECT_EQ(loader.Libraries()[0]->Entry(), nullptr);
    EXPECT_THAT(loader.Entries(), IsEmpty());
    EXPECT_THAT(loader.Paths(), IsEmpty());
}

TEST(PluginsFactory, LibraryWithoutTheEntryStaysLoadedInItsWrapper) {
    Loader loader;
    loader.Load(PluginFolder(), L"no_entry.plugin|", kEntry);
    ASSERT_EQ(loader.Libraries().size(), 1u);
    EXPECT_NE(loader.Libraries()[0]->Module(), nullptr);
    EXPECT_EQ(loader.Libraries()[0]->Entry(), nullptr);
    EXPECT_THAT(loader.Entries(), IsEmpty());
}

TEST(PluginsFactory, SameFileTwiceIsOneModuleAndTwoEntries) {
    Loader loader;
    loader.Load(PluginFolder(), L"plain.plugin|plain.plugin|", kEntry);
    ASSERT_EQ(loader.Libraries().size(), 2u);
    EXPECT_EQ(loader.Libraries()[0]->Module(), loader.Libraries()[1]->Module());
    ASSERT_EQ(loader.Entries().size(), 2u);
    EXPECT_EQ(loader.Entries()[0], loader.Entries()[1]);
}

TEST(PluginsFactory, PathIsDirectoryBackslashNameAndParallelToEntries) {
    Loader loader;
    const std::wstring folder = PluginFolder();
    loader.Load(folder, L"absent.plugin|plain.plugin||no_entry.plugin|other.plugin|tail", kEntry);
    EXPECT_EQ(loader.Libraries().size(), 5u);
    EXPECT_EQ(loader.Entries().size(), 2u);
    EXPECT_THAT(loader.Paths(),
                ElementsAre(folder + L"\\plain.plugin", folder + L"\\other.plugin"));
}

TEST(PluginsFactory, LoadingTwiceAppends) {
    Loader loader;
    loader.Load(PluginFolder(), L"plain.plugin|", kEntry);
    loader.Load(PluginFolder(), L"other.plugin|", kEntry);
    EXPECT_EQ(loader.Entries().size(), 2u);
}

TEST(PluginsFactory, EntryNameIsAsked) {
    Loader loader;
    loader.Load(PluginFolder(), L"plain.plugin|no_entry.plugin|", L"CreateSomethingElse");
    EXPECT_EQ(loader.Libraries()[0]->Entry(), nullptr);
    EXPECT_NE(loader.Libraries()[1]->Entry(), nullptr);
}

TEST(PluginsFactory, EmptyEntryNameResolvesNothing) {
    Loader loader;
    loader.Load(PluginFolder(), L"plain.plugin|", L"");
    ASSERT_EQ(loader.Libraries().size(), 1u);
    EXPECT_NE(loader.Libraries()[0]->Module(), nullptr);
    EXPECT_THAT(loader.Entries(), IsEmpty());
}

}  // namespace
}  // namespace tarnex
