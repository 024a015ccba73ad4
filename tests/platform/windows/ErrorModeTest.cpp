// Loading a library asks the user nothing and leaves the thread's error mode as it was.

#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>

#include "platform/Module.h"
#include "platform/NativePath.h"
#include "platform/SettingsStore.h"

namespace {

class ErrorMode : public testing::TestWithParam<DWORD> {
protected:
    ErrorMode() { SetThreadErrorMode(GetParam(), &before_); }
    ~ErrorMode() override { SetThreadErrorMode(before_, nullptr); }
    DWORD before_ = 0;
};

TEST_P(ErrorMode, IsAsBeforeWhenALibraryWasLoaded) {
    wchar_t folder[MAX_PATH];
    GetSystemDirectoryW(folder, MAX_PATH);
    void* module = platform::LoadModule(std::wstring(folder) + L"\\version.dll");
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(GetThreadErrorMode(), GetParam());
    test_platform::UnloadModule(module);
}

TEST_P(ErrorMode, IsAsBeforeWhenNoneWasAndTheReasonIsKept) {
    const test_platform::TempFolder folder;
    const std::filesystem::path file = folder.Path() / "no.dll";
    EXPECT_EQ(platform::LoadModule(platform::WidePath(file.native())), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
    EXPECT_EQ(GetThreadErrorMode(), GetParam());
    std::ofstream(file) << "not a library";
    EXPECT_EQ(platform::LoadModule(platform::WidePath(file.native())), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_BAD_EXE_FORMAT});
    EXPECT_EQ(GetThreadErrorMode(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Modes, ErrorMode,
                         testing::Values(0, SEM_NOGPFAULTERRORBOX, SEM_FAILCRITICALERRORS));

}  // namespace
