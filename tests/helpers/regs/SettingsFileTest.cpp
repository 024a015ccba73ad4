// The INI file that holds the settings where the system has no registry.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "platform/Settings.h"
#include "platform/SettingsStore.h"

namespace {

class SettingsFile : public ::testing::Test {
protected:
    void SetUp() override { setenv("TARNEX_SETTINGS", Path().c_str(), 1); }
    void TearDown() override { test_platform::ResetSettings(); }

    std::filesystem::path Path() const { return folder_.Path() / "sub" / "settings.ini"; }
    void Put(const std::string& text) const {
        std::filesystem::create_directories(Path().parent_path());
        std::ofstream(Path()) << text;
    }
    static std::string Value(const std::wstring& key, const std::wstring& name) {
        char bytes[64] = {};
        std::uint32_t size = sizeof bytes;
        const auto handle =
            platform::OpenSettingsKey(platform::CurrentUserSettings(), key, 0x20019);
        if (handle == nullptr) return "no key";
        const auto result = platform::QuerySettingsValue(handle, name, bytes, size);
        platform::CloseSettingsKey(handle);
        return result == platform::SettingsResult::kOk ? std::string(bytes, size) : "no value";
    }

    test_platform::TempFolder folder_;
};

TEST_F(SettingsFile, ValuesHaveTheirForms) {
    Put("[A\\b]\ns=text\nq=\" t \"\nd=dword:1f\nh=hex:61,00,62\n");
    EXPECT_EQ(Value(L"A\\b", L"s"), std::string("t\0e\0x\0t\0\0\0", 10));
    EXPECT_EQ(Value(L"A\\b", L"q"), std::string(" \0t\0 \0\0\0", 8));
    EXPECT_EQ(Value(L"A\\b", L"d"), std::string("\x1f\0\0\0", 4));
    EXPECT_EQ(Value(L"A\\b", L"h"), std::string("a\0b", 3));
    EXPECT_EQ(Value(L"a\\B", L"H"), std::string("a\0b", 3));
    EXPECT_EQ(Value(L"A\\b", L"x"), "no value");
    EXPECT_EQ(Value(L"A", L"s"), "no value");
    EXPECT_EQ(Value(L"A\\c", L"s"), "no key");
}

TEST_F(SettingsFile, TextsAreUtf16) {
    Put("[A]\ns=\xC3\xA9\xF0\x9D\x84\x9E\n");  // an e with an accent, and a clef
    EXPECT_EQ(Value(L"A", L"s"), std::string("\xE9\0\x34\xD8\x1E\xDD\0\0", 8));
}

TEST_F(SettingsFile, LiesInTheFolderOfSettingsUnlessItIsNamed) {
    unsetenv("TARNEX_SETTINGS");
    const char* const before = std::getenv("XDG_CONFIG_HOME");
    const std::string kept = before ? before : "";
    setenv("XDG_CONFIG_HOME", "/some where", 1);
    EXPECT_EQ(platform::SettingsStore(), L"/some where/tarnex.ini");
    setenv("XDG_CONFIG_HOME", "", 1);
    EXPECT_TRUE(platform::SettingsStore().ends_with(L"/.config/tarnex.ini"));
    if (before) {
        setenv("XDG_CONFIG_HOME", kept.c_str(), 1);
    } else {
        unsetenv("XDG_CONFIG_HOME");
    }
}

TEST_F(SettingsFile, AbsentOrBrokenFileHoldsNothing) {
    EXPECT_EQ(Value(L"A", L"s"), "no key");
    Put("[A\nrubbish");
    EXPECT_EQ(Value(L"A", L"s"), "no key");
}

TEST_F(SettingsFile, IsReadAnewAtEachOpening) {
    Put("[A]\nh=hex:61\n");
    EXPECT_EQ(Value(L"A", L"h"), "a");
    Put("[A]\nh=hex:62\n");
    EXPECT_EQ(Value(L"A", L"h"), "b");
}

TEST_F(SettingsFile, CreatedKeyStaysAndKeepsTheRest) {
    Put("[A]\nh=hex:61\n");
    const auto root = platform::CurrentUserSettings();
    const auto key = platform::CreateSettingsKey(root, L"B\\c", 7);
    ASSERT_NE(key, nullptr);
    platform::CloseSettingsKey(key);
    EXPECT_EQ(Value(L"B\\c", L"x"), "no value");
    EXPECT_EQ(Value(L"B", L"x"), "no value");
    EXPECT_EQ(Value(L"A", L"h"), "a");
}

}  // namespace
