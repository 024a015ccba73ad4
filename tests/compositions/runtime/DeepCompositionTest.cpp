// A composition whose structure is a million levels deep, from the file to the effect and back, on
// a stack of 256 KiB.

#include <gtest/gtest.h>

#include "compositions/ArchiveWriter.h"
#include "compositions/CompositionFactory.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"
#include "support/SmallStack.h"

namespace {

using namespace compositions;

constexpr int kMany = 1'000'000;

std::string DeepScript() {
    std::string text =
        "[SETUP]\nNAME = \"Deep\"\nCATEGORY = \"C\"\n[SOURCES]\nBack = INPUT\n[EFFECTS]\n"
        "E = \"e\"\n[STRUCTURE]\nOUTPUT = E";
    for (int i = 0; i < kMany; ++i) text += "(E";
    return text.append(kMany, ')') + "\n";
}

TEST(DeepComposition, IsRegisteredCreatedAndDestroyed) {
    const TempFolder folder;
    WriteBytes(folder / "deep.txt", DeepScript());
    RunOnSmallStack([&] {
        CompositionFactory factory(L"");
        std::wstring name;
        ASSERT_TRUE(factory.RegisterComposition(folder.Wide("deep.txt"), true, name));
        std::shared_ptr<fx::IBaseFX> effect;
        EXPECT_EQ(factory.CreateFX(std::uint64_t{0}, effect), fx::eSuccess);
        effect.reset();
    });
}

TEST(DeepComposition, IsCreatedFromItsArchive) {
    const TempFolder folder;
    RunOnSmallStack([&] {
        CompositionDescription description = samples::Small();
        description.structure = samples::Chain(kMany);
        ASSERT_TRUE(WriteArchive(folder.Wide("deep.mxf"), description));
        CompositionFactory factory(L"");
        std::shared_ptr<fx::IBaseFX> effect;
        EXPECT_EQ(factory.CreateFX(folder.Wide("deep.mxf"), effect), fx::eSuccess);
    });
}

}  // namespace
