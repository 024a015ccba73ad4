// Hosts that are killed while they write archives: the archive beside the script is the old one or
// the new one, whole, and what they left goes with the next write.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <thread>

#include "compositions/archive/PlainArchive.h"
#include "compositions/host/ConverterValues.h"
#include "host/HostSession.h"

namespace host_test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

int Rounds() {
    constexpr int kLongRounds = 200;
    return std::getenv("TARNEX_LONG_TESTS") != nullptr ? kLongRounds : TARNEX_KILLED_WRITERS;
}

// Large, so that most of the time goes into writing its archive.
std::string LargeScript(const std::string& name) {
    std::string text = "[SETUP]\nNAME = \"" + name +
                       "\"\nCATEGORY = \"C\"\n[SOURCES]\nBack = INPUT\n[EFFECTS]\nB = \"Blur\"\n"
                       "[STRUCTURE]\nOUTPUT = B( Back )\n[PROPERTIES]\n";
    const std::string value(10'000, name[0]);
    for (int i = 0; i < 40; ++i) {
        text += "READ \"p" + std::to_string(i) + "\" = \"" + value + "\"\n";
    }
    return text;
}

class KilledWriter : public HostTest {
protected:
    KilledWriter() : values_(sandbox_.Folder() / "settings.ini") {
        fs::create_directories(Folder());
        values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
        // Both have the archive fx.mxf.
        std::ofstream(First(), std::ios::binary) << LargeScript("First");
        std::ofstream(Second(), std::ios::binary) << LargeScript("Second");
    }

    fs::path Folder() const { return sandbox_.Folder() / "compositions"; }
    fs::path First() const { return Folder() / "fx.first"; }
    fs::path Second() const { return Folder() / "fx.second"; }

    std::string Archive() const {
        std::ifstream stream(Folder() / "fx.mxf", std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    std::set<std::string> Files() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(Folder())) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }
    std::string Written(const fs::path& script) {
        Host host(sandbox_, &log_);
        host.Start("");
        EXPECT_EQ(host.Do({"create_path", Utf8(script)}).substr(0, 5), "0 set");
        EXPECT_EQ(host.Finish(), 0);
        return Archive();
    }
    // Lets a host write one archive after the other and kills it at some moment of a write.
    void KillAWriter() {
        Host host(sandbox_, &log_);
        host.Start("");
        host.Send({"create_path_forever", Utf8(First()), Utf8(Second())});
        std::string line;
        ASSERT_TRUE(host.NextLine(line));
        const auto begin = Clock::now();
        ASSERT_TRUE(host.NextLine(line));
        const std::chrono::duration<double> each = Clock::now() - begin;
        std::this_thread::sleep_for(each * std::uniform_real_distribution<>(0, 2)(random_));
        host.Kill();
    }

    ScopedConverterValues values_;
    std::mt19937 random_{std::random_device()()};
};

TEST_F(KilledWriter, LeavesTheOldArchiveOrTheNewOneAndNothingForLong) {
    const std::string second = Written(Second());
    const std::string first = Written(First());
    ASSERT_TRUE(plain::Read(first).whole && plain::Read(second).whole);
    ASSERT_NE(first, second);
    const std::set<std::string> clean{"fx.first", "fx.mxf", "fx.second"};
    ASSERT_EQ(Files(), clean);
    std::set<std::string> tokens;  // what tells the files of two processes of one number apart
    int leftovers = 0;
    int rounds = 0;
    // They go on until a file was left behind, so that its removal is seen, but not for ever.
    const int enough = Rounds();
    while (rounds < enough || (leftovers == 0 && rounds < 50 * enough)) {
        ++rounds;
        ASSERT_NO_FATAL_FAILURE(KillAWriter());
        const std::string bytes = Archive();
        ASSERT_TRUE(bytes == first || bytes == second)
            << "round " << rounds << ": " << bytes.size() << " bytes";
        for (const std::string& name : Files()) {
            if (clean.contains(name)) continue;
            ++leftovers;
            ASSERT_TRUE(name.starts_with("~tarnex-") && name.ends_with(".tmp")) << name;
            tokens.insert(name.substr(name.size() - 12, 8));
        }
        ASSERT_EQ(Written(First()), first);
        ASSERT_EQ(Files(), clean) << "round " << rounds;
    }
    EXPECT_GT(leftovers, 0) << "no host was killed while it was writing";
    EXPECT_EQ(tokens.size(), static_cast<std::size_t>(leftovers));
    RecordProperty("rounds", rounds);
    RecordProperty("leftovers", leftovers);
}

}  // namespace
}  // namespace host_test
