#include "base_types/NamePlaces.h"

#include <gtest/gtest.h>

namespace {

using base_types::NamePlaces;

constexpr std::uint64_t kHash = 0x1234567800000007;

TEST(NamePlaces, ForgetsAllWhenThereAreMoreEntries) {
    std::vector<std::uint32_t> slots;
    NamePlaces(slots, 1).Remember(kHash, 0);
    const auto any = [](std::size_t) { return true; };
    EXPECT_EQ(NamePlaces(slots, 1).Find(kHash, any), 0u);
    EXPECT_EQ(NamePlaces(slots, 2).Find(kHash, any), NamePlaces::kNone);
    NamePlaces(slots, 2).Remember(kHash + 1, 1);
    EXPECT_EQ(NamePlaces(slots, 2).Find(kHash, any), NamePlaces::kNone);
}

TEST(NamePlaces, NamesOfEqualHashAreToldApartOrSearchedFor) {
    std::vector<std::uint32_t> slots;
    NamePlaces places(slots, 8);
    for (std::size_t index = 0; index != 8; ++index) {
        places.Remember(kHash, index);
        const auto isIt = [index](std::size_t i) { return i == index; };
        EXPECT_EQ(places.Find(kHash, isIt), index);
        EXPECT_EQ(places.Find(kHash, [](std::size_t i) { return i > 7; }), NamePlaces::kNone);
    }
}

}  // namespace
