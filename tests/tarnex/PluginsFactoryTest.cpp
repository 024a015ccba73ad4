#include "tarnex/PluginsFactory.h"

#include <gmock/gmock.h>

#include "support/Text.h"
#include "tarnex/AllocationFault.h"
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

TEST(PluginsFactory, LoadWithoutMemoryThrowsAndKeepsWhatWasLoaded) {
    using test_support::AllocationFault;
    const std::wstring folder = PluginFolder();
    const std::wstring list = L"plain.plugin|absent.plugin|other.plugin|";
    Loader whole;
    whole.Load(folder, list, kEntry);
    ASSERT_EQ(whole.Entries().size(), 2u);
    std::size_t most = 0;
    test_support::ForEachAllocation([&](int nth, bool lasts) {
        const std::int64_t live = test_support::LiveAllocations();
        bool happened = true;
        {
            Loader loader;
            loader.Load(folder, L"plain.plugin|", kEntry);
            bool thrown = false;
            {
                const AllocationFault fault(test_support::Fault::kBadAlloc, nth, lasts);
                try {
                    loader.Load(folder, list, kEntry);
                } catch (const std::bad_alloc&) {
                    thrown = true;
                }
                happened = fault.Happened();
            }
            EXPECT_EQ(thrown, happened);
            const std::size_t count = loader.Entries().size();
            most = std::max(most, count);
            EXPECT_EQ(loader.Paths().size(), count);
            EXPECT_GE(loader.Libraries().size(), count);
            EXPECT_GE(count, 1u);
            EXPECT_LE(count, happened ? 2u : 3u);
            EXPECT_EQ(loader.Entries()[0], whole.Entries()[0]);
            EXPECT_EQ(loader.Paths()[0], whole.Paths()[0]);
            for (std::size_t i = 1; i < std::min(count, loader.Paths().size()); ++i) {
                EXPECT_EQ(loader.Entries()[i], whole.Entries()[i - 1]);
                EXPECT_EQ(loader.Paths()[i], whole.Paths()[i - 1]);
            }
            EXPECT_TRUE(loader.Load(folder, L"other.plugin|", kEntry)) << "the next call";
            EXPECT_EQ(loader.Entries().size(), count + 1);
        }
        EXPECT_EQ(test_support::LiveAllocations(), live) << "leaked";
        return happened;
    });
    EXPECT_EQ(most, 3u);
}

}  // namespace
}  // namespace tarnex
