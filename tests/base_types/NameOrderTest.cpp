#include "base_types/NameOrder.h"

#include <gtest/gtest.h>

namespace {

using base_types::CompareNames;

void ExpectAscending(const std::wstring& first, const std::wstring& second) {
    EXPECT_LT(CompareNames(first, second), 0);
    EXPECT_GT(CompareNames(second, first), 0);
    EXPECT_EQ(CompareNames(first, first), 0);
    EXPECT_EQ(CompareNames(second, second), 0);
}

TEST(NameOrder, FirstDifferingUnitDecides) {
    ExpectAscending(L"Ab", L"B");
    ExpectAscending(L"Abc", L"B");
    ExpectAscending(L"abc9", L"abd");
}

TEST(NameOrder, PrefixStandsFirst) {
    ExpectAscending(L"Ab", L"Abc");
    ExpectAscending(L"", L"A");
    ExpectAscending(L"Ab", std::wstring(L"Ab\0", 3));
}

TEST(NameOrder, NoCaseFolding) {
    ExpectAscending(L"Gain", L"gain");
    ExpectAscending(L"Z", L"a");
}

TEST(NameOrder, UnitsAreUnsigned) {
    ExpectAscending(L"z", L"\u6f22");
    ExpectAscending(L"\u7fff", L"\u8000");
    ExpectAscending(L"\u8000", L"\uffff");
}

// A character beyond 0xFFFF is two units from 0xD800 on, wherever wide characters are 32 bits too.
TEST(NameOrder, SurrogatePairsStandBeforeTheEndOfTheFirstPlane) {
    ExpectAscending(L"\ud7ff", L"\U00010000");
    ExpectAscending(L"\U00010000", L"\U0010ffff");
    ExpectAscending(L"\U0010ffff", L"\ue000");
    ExpectAscending(L"\U0001f600", L"\uffee");
}

}  // namespace
