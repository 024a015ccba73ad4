// What reading hostile scripts asks the system for: it grows with the text, and with what the text
// has kept, and no faster.

#include <gtest/gtest.h>

#include "bench/HostileScripts.h"
#include "compositions/CompScript.h"
#include "tarnex/AllocationFault.h"

namespace {

using compositions::CompositionScript;

constexpr std::size_t kSmall = 10'000;
constexpr std::size_t kLarge = 300'000;

// The costliest texts are of elements of few characters, every one of which becomes a record. Lists
// double, so their memory asked for in all is up to four times what they hold.
constexpr double kMostBytesPerByte = 320;

// A list may have doubled just before the end of the large text and not of the small one.
constexpr double kMostGrowthPerByte = 2;

// All bytes asked for while the text is read, also those that were given back meanwhile.
std::size_t BytesToRead(const std::string& text, std::int32_t status) {
    const std::size_t before = test_support::RequestedBytes();
    const CompositionScript script(text);
    EXPECT_EQ(script.GetReadStatus(), status);
    return test_support::RequestedBytes() - before;
}

double BytesPerByte(const bench::Family& family, std::size_t size) {
    const std::string text = family.make(size);
    return static_cast<double>(BytesToRead(text, family.status)) / static_cast<double>(text.size());
}

TEST(HostileMemory, GrowsWithTheText) {
    BytesToRead(" ", 1);  // what the first reading of a process makes is not the text's
    for (const bench::Family& family : bench::HostileFamilies()) {
        const double small = BytesPerByte(family, kSmall);
        const double large = BytesPerByte(family, kLarge);
        EXPECT_LT(large, kMostBytesPerByte) << family.name;
        EXPECT_LT(large, kMostGrowthPerByte * small) << family.name;
    }
}

// Two characters make a node.
TEST(HostileMemory, OfTheShortestNamesGrowsWithTheText) {
    for (std::size_t names = 1'000; names < 60'000; names += names / 3) {
        std::string text = bench::kMandatory.substr(0, bench::kMandatory.size() - 1) + "(";
        for (std::size_t i = 0; i < names; ++i) text += "E ";
        text += ")";
        EXPECT_LT(BytesToRead(text, 0), kMostBytesPerByte * static_cast<double>(text.size()));
        EXPECT_EQ(CompositionScript(text).GetStructure().inputs.size(), names);
    }
}

// Every target of a statement has the value of its own, so the description grows with the product
// of both.
TEST(HostileMemory, GrowsWithTheDescriptionThatATextAsksFor) {
    constexpr std::size_t kTargets = 1'000;
    constexpr std::size_t kValue = 2'000;
    std::string text = bench::kMandatory + "[TIMELINE] E.\"p\"";
    for (std::size_t i = 1; i < kTargets; ++i) text += ", E.\"p\"";
    text += " = \"" + std::string(kValue, 'v') + "\"";
    EXPECT_EQ(CompositionScript(text).GetTimelineEntries().size(), kTargets);
    EXPECT_LT(BytesToRead(text, 0), kTargets * kValue * sizeof(wchar_t) * 3 / 2);
}

}  // namespace
