// The built library in a host whose memory, or whose system, gives out while it loads it.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <fstream>

#include "SystemFault.h"
#include "compositions/archive/TempFolder.h"
#include "platform/Module.h"
#include "support/Library.h"
#include "support/Text.h"
#include "support/Usage.h"
#include "tarnex/AllocationFault.h"
#include "tarnex/ITarnex.h"

namespace {

using test_support::SystemCall;

class LibraryFault : public testing::Test {
protected:
    LibraryFault() {
        // A copy of its own: nobody else owns that one's manager.
        std::filesystem::copy_file(TARNEX_LIBRARY, library_);
        std::ofstream(folder_ / "settings.ini")
            << "[Software\\Tesmar\\Commons\\Log]\nEnabled=dword:1\nLevel=dword:ffffffff\n";
        setenv("TARNEX_SETTINGS", (folder_ / "settings.ini").c_str(), 1);
    }
    ~LibraryFault() override {
        unsetenv("TARNEX_SETTINGS");
        std::filesystem::remove_all(LogFolder());
    }
    static std::filesystem::path LogFolder() {
        return test_support::PathFromUtf8(test_support::Utf8(platform::ExecutablePath()))
                   .parent_path() /
               "Logs";
    }

    // What a host gets while the fault lasts and when it is over.
    struct Answers {
        bool loaded = false;
        tarnex::_eError during = tarnex::eSuccess;
        bool set = false;
        bool happened = false;
    };

    // Loads under the fault, asks for the manager under it and once more without, and unloads.
    template <class Fault, class... Arguments>
    Answers Load(Arguments... arguments) {
        Answers answers;
        ++loads_;
        void* library = nullptr;
        std::shared_ptr<tarnex::ITarnex> manager;
        {
            const Fault fault(arguments...);
            library = dlopen(library_.c_str(), RTLD_NOW | RTLD_LOCAL);
            answers.loaded = library != nullptr;
            if (library != nullptr) {
                const auto entry =
                    reinterpret_cast<decltype(&GetTarnex)>(dlsym(library, "GetTarnex"));
                answers.during = entry(manager);
            }
            answers.happened = fault.Happened();
        }
        if (library == nullptr) return answers;
        const auto entry = reinterpret_cast<decltype(&GetTarnex)>(dlsym(library, "GetTarnex"));
        EXPECT_EQ(manager != nullptr, answers.during == tarnex::eSuccess);
        EXPECT_EQ(entry(manager), tarnex::eSuccess) << "the next call";
        answers.set = manager != nullptr;
        manager.reset();
        EXPECT_EQ(dlclose(library), 0);
        return answers;
    }

    // What is in use, from where on loads are counted.
    test_support::Usage Begin() {
        loads_ = 0;
        return test_support::LeastUsage(20, {});
    }
    // The manager of each load lives until the process ends.
    void ExpectNothingStayed(const test_support::Usage& before) {
        const test_support::Usage after = test_support::LeastUsage(200, before);
        EXPECT_LE(after.handles, before.handles);
        EXPECT_LE(after.threads, before.threads);
        EXPECT_LE(after.mappings, before.mappings);
        EXPECT_LE(after.heapBytes - before.heapBytes,
                  loads_ * (kManagerBytes + TARNEX_BYTES_PER_LOAD) + kWaveringBytes)
            << loads_ << " loads";
    }

    static constexpr int kManagerBytes = 48;
    static constexpr int kWaveringBytes = 4096;

    int loads_ = 0;
    TempFolder folder_;
    const std::filesystem::path library_ = folder_ / test_support::kTarnexFile;
};

TEST_F(LibraryFault, MemoryThatRunsOutOnLoadingCostsNoMoreThanACode) {
    using test_support::AllocationFault;
    // What the system and the heap set up when an exception comes from here or there.
    for (int nth = 1; nth < 30; ++nth) Load<AllocationFault>(test_support::Fault::kBadAlloc, nth);
    const test_support::Usage before = Begin();
    test_support::ForEachAllocation([&](int nth, bool lasts) {
        const Answers answers = Load<AllocationFault>(test_support::Fault::kBadAlloc, nth, lasts);
        EXPECT_TRUE(answers.loaded);
        EXPECT_TRUE(answers.set);
        if (!answers.happened) {
            EXPECT_EQ(answers.during, tarnex::eSuccess);
        }
        return answers.happened;
    });
    ExpectNothingStayed(before);
}

// The thread that writes the log meets its fault whenever it asks for memory; whoever unloads the
// library has none.
TEST_F(LibraryFault, MemoryThatRunsOutOnUnloadingCostsTheLogAlone) {
    using test_support::AllocationFault;
    using test_support::OtherThreadsFault;
    int logs = 0;
    const auto cycle = [&](int nth, bool lasts) {
        std::filesystem::remove_all(LogFolder());
        ++loads_;
        const OtherThreadsFault thread(nth, lasts);
        void* library = dlopen(library_.c_str(), RTLD_NOW | RTLD_LOCAL);
        EXPECT_NE(library, nullptr);
        if (library == nullptr) return false;
        {
            const AllocationFault here(test_support::Fault::kBadAlloc, 1, true);
            EXPECT_EQ(dlclose(library), 0);
        }
        EXPECT_EQ(dlopen(library_.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD), nullptr);
        const bool hasLog =
            std::filesystem::exists(LogFolder()) && !std::filesystem::is_empty(LogFolder());
        logs += hasLog;
        EXPECT_TRUE(hasLog || thread.Happened());
        return thread.Happened();
    };
    cycle(100'000, false);
    const test_support::Usage before = Begin();
    test_support::ForEachAllocation(cycle);
    EXPECT_GT(logs, 2) << "nothing but rounds without a log";
    ExpectNothingStayed(before);
}

TEST_F(LibraryFault, SystemThatRefusesOnLoadingCostsTheLogAtMost) {
    using test_support::SystemFault;
    Load<SystemFault>(SystemCall::kOpen, 100'000, false);
    const test_support::Usage before = Begin();
    for (const SystemCall call : {SystemCall::kOpen, SystemCall::kLook, SystemCall::kRead,
                                  SystemCall::kWrite, SystemCall::kMove, SystemCall::kLock,
                                  SystemCall::kMemory, SystemCall::kEvent, SystemCall::kThread}) {
        test_support::ForEachCall([&](int nth, bool lasts) {
            const Answers answers = Load<SystemFault>(call, nth, lasts);
            EXPECT_TRUE(answers.loaded);
            EXPECT_EQ(answers.during, tarnex::eSuccess);
            EXPECT_TRUE(answers.set);
            // How often a log is written depends on how its thread runs: enough is enough.
            return answers.happened && nth < 40;
        });
    }
    ExpectNothingStayed(before);
}

}  // namespace
