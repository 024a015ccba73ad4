#include "helpers/regs/RegValue.h"

#include <gtest/gtest.h>

#include "helpers/regs/RegKey.h"
#include "platform/SettingsStore.h"

namespace {

using helpers::regs::HandleStack;
using helpers::regs::RegKey;
using helpers::regs::StringConverter;
using test_platform::Bytes;
using test_platform::StringBytes;
using test_platform::ValueKind;
using StringValue = helpers::regs::RegValue<std::wstring, StringConverter>;

const std::wstring kKey = L"Software\\Tesmar\\Tests\\Values";

class RegValueTest : public ::testing::Test {
protected:
    void SetUp() override {
        test_platform::ResetSettings();
        test_platform::PutValue(kKey, L"other", ValueKind::kString, StringBytes(u"other"));
    }
    void TearDown() override { test_platform::ResetSettings(); }

    // Reads the value into an object that already holds one; what it holds afterwards.
    static std::wstring ReadOver(const Bytes& bytes, ValueKind kind, bool& read) {
        test_platform::PutValue(kKey, L"v", kind, bytes);
        HandleStack handles;
        platform::SettingsKey key = nullptr;
        EXPECT_TRUE(RegKey(kKey).Open(platform::CurrentUserSettings(), false, handles, key));
        StringValue value(kKey, L"other");
        EXPECT_TRUE(value.Read(key));
        StringValue tested(kKey, L"v");
        read = tested.Read(key);
        EXPECT_EQ(read, !tested.Value().empty());
        return tested.Value();
    }
    static std::wstring Read(const Bytes& bytes, ValueKind kind = ValueKind::kString) {
        bool read = false;
        return ReadOver(bytes, kind, read);
    }
};

TEST_F(RegValueTest, ReadsTheTextWithoutItsTerminators) {
    EXPECT_EQ(Read(StringBytes(u"conv.exe")), L"conv.exe");
    EXPECT_EQ(Read(StringBytes(u"conv.exe", 0)), L"conv.exe");
    EXPECT_EQ(Read(StringBytes(u"conv.exe", 5)), L"conv.exe");
    EXPECT_EQ(Read(StringBytes(std::u16string(u"a\0b", 3))), std::wstring(L"a\0b", 3));
}

TEST_F(RegValueTest, EmptyValueReadsAsAbsent) {
    EXPECT_EQ(Read({}), L"");
    EXPECT_EQ(Read(StringBytes(u"", 1)), L"");
    EXPECT_EQ(Read(StringBytes(u"", 4)), L"");
}

TEST_F(RegValueTest, OddNumberOfBytesReadsAsAbsent) {
    EXPECT_EQ(Read({'a', 0, 'b'}, ValueKind::kBinary), L"");
    EXPECT_EQ(Read({'a'}, ValueKind::kBinary), L"");
}

TEST_F(RegValueTest, HugeValueIsReadWhole) {
    const std::u16string huge(100'000, u'h');
    EXPECT_EQ(Read(StringBytes(huge)), std::wstring(huge.size(), L'h'));
}

TEST_F(RegValueTest, AbsentValueAndKeyReadAsAbsent) {
    HandleStack handles;
    platform::SettingsKey key = nullptr;
    ASSERT_TRUE(RegKey(kKey).Open(platform::CurrentUserSettings(), false, handles, key));
    StringValue value(kKey, L"none");
    EXPECT_FALSE(value.Read(key));
    EXPECT_EQ(value.Value(), L"");
}

TEST_F(RegValueTest, FailureLeavesTheValueUnchanged) {
    HandleStack handles;
    platform::SettingsKey key = nullptr;
    test_platform::PutValue(kKey, L"v", ValueKind::kString, StringBytes(u"before"));
    StringValue value(kKey, L"v");
    ASSERT_TRUE(RegKey(kKey).Open(platform::CurrentUserSettings(), false, handles, key));
    ASSERT_TRUE(value.Read(key));
    test_platform::PutValue(kKey, L"v", ValueKind::kBinary, {1, 2, 3});
    ASSERT_TRUE(RegKey(kKey).Open(platform::CurrentUserSettings(), false, handles, key));
    EXPECT_FALSE(value.Read(key));
    EXPECT_EQ(value.Value(), L"before");
}

TEST_F(RegValueTest, ConverterThrowsItsExceptionForHalfACodeUnit) {
    const std::uint8_t bytes[] = {'a', 0, 'b'};
    EXPECT_THROW(StringConverter::Convert(bytes, 3), StringConverter::Exception);
    EXPECT_EQ(StringConverter::Convert(bytes, 2), L"a");
    EXPECT_EQ(StringConverter::Convert(nullptr, 0), L"");
}

TEST_F(RegValueTest, NumberTakesAnyValueOfUpTo4Bytes) {
    const auto read = [](const Bytes& bytes, ValueKind kind) {
        test_platform::PutValue(kKey, L"n", kind, bytes);
        std::uint32_t number = 77;
        const bool fine =
            platform::ReadSettingsNumber(platform::CurrentUserSettings(), kKey, L"n", number);
        EXPECT_TRUE(fine || number == 77);
        return fine ? number : 77;
    };
    EXPECT_EQ(read(test_platform::NumberBytes(0xFFFFFFFF), ValueKind::kNumber), 0xFFFFFFFFu);
    EXPECT_EQ(read({1, 0, 0, 0}, ValueKind::kBinary), 1u);
    EXPECT_EQ(read({1, 2}, ValueKind::kBinary), 0x201u);
    EXPECT_EQ(read(StringBytes(u"1"), ValueKind::kString), 0x31u);
    EXPECT_EQ(read({1, 2, 3, 4, 5}, ValueKind::kBinary), 77u);
    EXPECT_EQ(read(StringBytes(u"100"), ValueKind::kString), 77u);
}

}  // namespace
