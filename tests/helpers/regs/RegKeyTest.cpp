#include "helpers/regs/RegKey.h"

#include <gtest/gtest.h>

#include "platform/SettingsStore.h"

namespace {

using helpers::regs::HandleStack;
using helpers::regs::RegKey;
using platform::SettingsKey;

const std::wstring kRoot = L"Software\\Tesmar\\Tests";

// A path of exactly `length` characters below kRoot, in pieces of a few characters.
std::wstring PathOf(std::size_t length) {
    std::wstring path = kRoot;
    while (path.size() + 10 < length) path += L"\\piece1234";
    path += L"\\";
    return path + std::wstring(length - path.size(), L'x');
}

class RegKeyTest : public ::testing::Test {
protected:
    void SetUp() override { test_platform::ResetSettings(); }
    void TearDown() override { test_platform::ResetSettings(); }

    static void Make(const std::wstring& path) {
        test_platform::PutValue(path, L"v", test_platform::ValueKind::kNumber,
                                test_platform::NumberBytes(1));
    }
    static bool Open(const std::wstring& path, bool create, HandleStack& handles) {
        SettingsKey key = nullptr;
        const bool opened =
            RegKey(path).Open(platform::CurrentUserSettings(), create, handles, key);
        EXPECT_EQ(opened, key != nullptr);
        return opened;
    }
};

TEST_F(RegKeyTest, MissingKeyIsNotOpenedAndLeavesTheOutputAlone) {
    HandleStack handles;
    SettingsKey key = &handles;
    EXPECT_FALSE(RegKey(kRoot).Open(platform::CurrentUserSettings(), false, handles, key));
    EXPECT_EQ(key, &handles);
    EXPECT_EQ(handles.Size(), 0u);
}

TEST_F(RegKeyTest, PathOf254CharactersIsOpenedInOneCall) {
    Make(PathOf(254));
    HandleStack handles;
    EXPECT_TRUE(Open(PathOf(254), false, handles));
    EXPECT_EQ(handles.Size(), 1u);
}

TEST_F(RegKeyTest, PathOf255CharactersIsOpenedPiecewise) {
    Make(PathOf(255));
    HandleStack handles;
    EXPECT_TRUE(Open(PathOf(255), false, handles));
    EXPECT_EQ(handles.Size(), 2u);
}

TEST_F(RegKeyTest, VeryLongPathIsOpenedPiecewise) {
    Make(PathOf(1'000));
    HandleStack handles;
    EXPECT_TRUE(Open(PathOf(1'000), false, handles));
    EXPECT_EQ(handles.Size(), 4u);
}

TEST_F(RegKeyTest, CreateMakesWhatIsMissing) {
    for (const std::size_t length : {100u, 254u, 255u, 600u}) {
        HandleStack handles;
        EXPECT_FALSE(Open(PathOf(length), false, handles)) << length;
        EXPECT_TRUE(Open(PathOf(length), true, handles)) << length;
        EXPECT_TRUE(Open(PathOf(length), false, handles)) << length;
    }
}

TEST_F(RegKeyTest, FailureOnTheWayKeepsTheHandlesThatWereOpened) {
    const std::wstring path = PathOf(600);
    Make(path.substr(0, path.rfind(L'\\', 254)));
    HandleStack handles;
    EXPECT_FALSE(Open(path, false, handles));
    EXPECT_EQ(handles.Size(), 1u);
    handles.Release();
    EXPECT_EQ(handles.Size(), 0u);
    handles.Release();
}

TEST_F(RegKeyTest, PieceThatNoCallMayTakeFails) {
    HandleStack handles;
    EXPECT_FALSE(Open(kRoot + L"\\" + std::wstring(255, L'x'), true, handles));
    EXPECT_FALSE(Open(std::wstring(255, L'x'), true, handles));
}

}  // namespace
