// The companion when the system refuses it something.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include "SystemFault.h"
#include "frame/ProgressLine.h"

namespace {

// Makes a terminal of standard error.
class ErrorTerminal {
public:
    ErrorTerminal() : master_(posix_openpt(O_RDWR | O_NOCTTY)), before_(dup(STDERR_FILENO)) {
        grantpt(master_);
        unlockpt(master_);
        const int terminal = open(ptsname(master_), O_RDWR | O_NOCTTY);
        dup2(terminal, STDERR_FILENO);
        close(terminal);
        setenv("TERM", "xterm", 1);
    }
    ~ErrorTerminal() {
        dup2(before_, STDERR_FILENO);
        close(before_);
        close(master_);
    }
    ErrorTerminal(const ErrorTerminal&) = delete;
    ErrorTerminal& operator=(const ErrorTerminal&) = delete;

private:
    int master_;
    int before_;
};

TEST(ToolFault, ProgressLineWithoutAThreadIsLeftOut) {
    const ErrorTerminal terminal;
    ASSERT_TRUE(isatty(STDERR_FILENO));
    tarnexctl::ProgressLine line;
    {
        const test_support::SystemFault fault(test_support::SystemCall::kThread, 1, true);
        EXPECT_NO_THROW(line.Show("something that takes long"));
        EXPECT_TRUE(fault.Happened());
    }
    line.Hide();
    EXPECT_NO_THROW(line.Show("the next try"));
}

}  // namespace
