// A disk that is really full: a small one of this program's own, which nobody else sees.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

#include "compositions/ArchiveWriter.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"
#include "helpers/tracer/service/LogFile.h"
#include "helpers/tracer/service/LogWriter.h"

namespace {

constexpr std::size_t kDiskBytes = 256 * 1024;
constexpr std::size_t kPageBytes = 4096;

void Put(const char* file, const std::string& text) {
    const int descriptor = open(file, O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) return;
    static_cast<void>(!write(descriptor, text.data(), text.size()));
    close(descriptor);
}

// Whether this program sees mounts of its own from here on. The superuser may simply; others where
// the system lets them be superusers among themselves.
bool HasOwnMounts() {
    static const bool own = [] {
        const std::string user = std::to_string(getuid());
        const std::string group = std::to_string(getgid());
        if (unshare(CLONE_NEWNS) != 0) {
            if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
            Put("/proc/self/setgroups", "deny");
            Put("/proc/self/uid_map", user + " " + user + " 1");
            Put("/proc/self/gid_map", group + " " + group + " 1");
        }
        return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    }();
    return own;
}

class FullDisk : public testing::Test {
protected:
    void SetUp() override {
        if (!HasOwnMounts() || mount("tmpfs", folder_.Path().c_str(), "tmpfs", 0,
                                     ("size=" + std::to_string(kDiskBytes)).c_str()) != 0) {
            GTEST_SKIP() << "this system lets the tests mount no disk of their own";
        }
        mounted_ = true;
    }
    void TearDown() override {
        if (mounted_) {
            EXPECT_EQ(umount2(folder_.Path().c_str(), MNT_DETACH), 0);
        }
    }
    // Leaves that many bytes of the disk.
    void Leave(std::size_t bytes) {
        std::filesystem::remove(folder_ / "filler");
        const std::size_t free = std::filesystem::space(folder_.Path()).available;
        ASSERT_GE(free, bytes);
        std::ofstream(folder_ / "filler", std::ios::binary) << std::string(free - bytes, 'x');
        ASSERT_EQ(std::filesystem::space(folder_.Path()).available, bytes);
    }

    TempFolder folder_;
    bool mounted_ = false;
};

TEST_F(FullDisk, OldArchiveStaysUntilTheNewOneHasRoom) {
    compositions::CompositionDescription large = samples::Everything();
    large.properties.resize(500, large.properties.front());
    const std::string old = plain::Write(samples::Small()).bytes;
    const std::string whole = plain::Write(large).bytes;
    ASSERT_LT(2 * whole.size(), kDiskBytes);
    WriteBytes(folder_ / "fx.mxf", old);
    for (std::size_t room = 0; room < whole.size(); room += kPageBytes) {
        ASSERT_NO_FATAL_FAILURE(Leave(room));
        ASSERT_FALSE(compositions::WriteArchive(folder_.Wide("fx.mxf"), large)) << room;
        ASSERT_EQ(ReadBytes(folder_ / "fx.mxf"), old) << room;
        ASSERT_EQ(std::filesystem::space(folder_.Path()).available, room) << "something is left";
    }
    ASSERT_NO_FATAL_FAILURE(Leave((whole.size() / kPageBytes + 2) * kPageBytes));
    EXPECT_TRUE(compositions::WriteArchive(folder_.Wide("fx.mxf"), large));
    EXPECT_EQ(ReadBytes(folder_ / "fx.mxf"), whole);
}

// Lines of different lengths, so that one that was cut off shows.
std::wstring Line(int number) {
    return L"line " + std::to_wstring(number) + L" " +
           std::wstring(static_cast<std::size_t>(number * 37 % 200), L'.') + L"|\n";
}

TEST_F(FullDisk, LogHasWholeLinesAloneAndGoesOnWhenThereIsRoom) {
    const auto layout = std::make_unique<helpers::TracerLayout>();
    helpers::Tracer tracer(*layout);
    tracer.InitializeBuffers();
    tracer.SetLevelMask(0xFFFFFFFF);
    tracer.SetRunning(true);
    helpers::LogFile file;
    const auto writer = std::make_unique<helpers::LogWriter>(tracer, file);
    ASSERT_TRUE(file.Open({{{L"", folder_.Wide("test.log")}}, ""}));
    writer->WriteFirstLine("program\n");
    int said = 0;
    const auto say = [&](int count) {
        for (; count > 0; --count) tracer.Write(2, Line(said++));
        writer->Finish();
    };
    say(20);
    for (int round = 0; round < 8; ++round) {
        ASSERT_NO_FATAL_FAILURE(Leave(2 * kPageBytes));
        for (int i = 0; i < 10; ++i) say(40);
        ASSERT_NO_FATAL_FAILURE(Leave(8 * kPageBytes));
        say(1);  // shorter than what may have been cut off before it
    }
    file.Close();

    std::istringstream log(ReadBytes(folder_ / "test.log"));
    std::string line;
    ASSERT_TRUE(std::getline(log, line) && line == "program") << line;
    int last = -1;
    int count = 0;
    while (std::getline(log, line)) {
        const std::size_t text = line.find("] line ");
        ASSERT_NE(text, std::string::npos) << line;
        const int number = std::atoi(line.c_str() + text + 7);
        ASSERT_GT(number, last) << line;
        const std::wstring expected = Line(number);
        ASSERT_EQ(line.substr(text + 2) + "\n", std::string(expected.begin(), expected.end()));
        last = number;
        ++count;
    }
    EXPECT_EQ(last, said - 1) << "the last one had room";
    EXPECT_GT(count, 20);
    EXPECT_LT(count, said) << "the disk was never full";
}

}  // namespace
