// A process that Wine gave up is started again, and nothing else is tried twice. No process can be
// made to be given up, so the starts here are played.

#include "platform/windows/ProcessStart.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace {

// A start that leaves one error after the other, and succeeds where the error is 0.
struct Starts {
    std::vector<DWORD> errors;
    std::size_t calls = 0;

    BOOL Run() {
        return platform::StartProcess([this] {
            SetLastError(errors.at(calls));
            return errors[calls++] == 0 ? TRUE : FALSE;
        });
    }
};

TEST(ProcessStart, AStartThatSucceedsIsTheOnlyOne) {
    Starts starts = {{0}};
    EXPECT_TRUE(starts.Run());
    EXPECT_EQ(starts.calls, 1u);
}

TEST(ProcessStart, AProcessThatWasGivenUpIsStartedAgain) {
    Starts starts = {{ERROR_INTERNAL_ERROR, ERROR_INTERNAL_ERROR, 0}};
    EXPECT_TRUE(starts.Run());
    EXPECT_EQ(starts.calls, 3u);
}

TEST(ProcessStart, ThreeGivenUpAreEnough) {
    Starts starts = {{ERROR_INTERNAL_ERROR, ERROR_INTERNAL_ERROR, ERROR_INTERNAL_ERROR}};
    EXPECT_FALSE(starts.Run());
    EXPECT_EQ(starts.calls, 3u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNAL_ERROR));
}

TEST(ProcessStart, AnyOtherErrorIsTheCallersAtOnce) {
    Starts starts = {{ERROR_FILE_NOT_FOUND}};
    EXPECT_FALSE(starts.Run());
    EXPECT_EQ(starts.calls, 1u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST(ProcessStart, AnErrorBehindAProcessThatWasGivenUpIsTheCallers) {
    Starts starts = {{ERROR_INTERNAL_ERROR, ERROR_NOT_ENOUGH_MEMORY}};
    EXPECT_FALSE(starts.Run());
    EXPECT_EQ(starts.calls, 2u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_ENOUGH_MEMORY));
}

}  // namespace
