#include "tracer_process/Commands.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <thread>

#include "helpers/tracer/Tracer.h"
#include "helpers/tracer/process_singleton.h"
#include "platform/ChildProcess.h"
#include "platform/CodePage.h"
#include "platform/Module.h"
#include "platform/NativePath.h"
#include "platform/SettingsStore.h"
#include "platform/SharedMemory.h"
#include "platform/Thread.h"
#include "support/Usage.h"
#include "tracer_process/HostSystem.h"

namespace trace_host {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;
using SayFunction = void(std::uint32_t level, const wchar_t* text);
using AttachedFunction = bool();

struct Module {
    void* handle = nullptr;
    SayFunction* say = nullptr;
    AttachedFunction* attached = nullptr;
};

std::map<std::string, Module> modules;
platform::SharedMemory foreignBlock;

fs::path OwnFolder() {
    return fs::path(platform::NativePath(platform::ExecutablePath())).parent_path();
}

unsigned Number(const std::string& text) {
    return static_cast<unsigned>(std::stoul(text));
}

std::wstring LibraryFile(const std::string& name) {
    return platform::WidePath((OwnFolder() / test_platform::LibraryFileName(name)).native());
}

Module Load(const std::string& name) {
    Module module;
    module.handle = platform::LoadModule(LibraryFile(name));
    if (module.handle == nullptr) return module;
    module.say = reinterpret_cast<SayFunction*>(platform::ResolveSymbol(module.handle, "Say"));
    module.attached =
        reinterpret_cast<AttachedFunction*>(platform::ResolveSymbol(module.handle, "Attached"));
    return module;
}

void LoadCommand(const Words& words) {
    modules[words[1]] = Load(words[1]);
    std::printf(modules[words[1]].handle != nullptr ? "loaded\n" : "not loaded\n");
}

// A library that is freed before its thread has begun leaves a moment later on some systems.
void AwaitGone(const std::string& name) {
    const std::wstring file = LibraryFile(name);
    for (int i = 0; i < 20'000 && IsLoaded(file); ++i) platform::SleepMs(1);
}

// Comes back when the library is gone.
void Free(const Words& words) {
    test_platform::UnloadModule(modules[words[1]].handle);
    modules.erase(words[1]);
    AwaitGone(words[1]);
}

void Say(const Words& words) {
    const std::wstring text = platform::ToWide(words[3], platform::CodePage::kUtf8);
    modules[words[1]].say(Number(words[2]), text.c_str());
}

void SayLong(const Words& words) {
    modules[words[1]].say(2, std::wstring(Number(words[2]), L'x').c_str());
}

// "say_numbered:module:count": lines that follow one another at once.
void SayNumbered(const Words& words) {
    for (unsigned i = 0; i < Number(words[2]); ++i) {
        modules[words[1]].say(2, (L"line " + std::to_wstring(i)).c_str());
    }
}

// The block as a bystander sees it, whom nobody counts. Mapped to the very end of the process,
// which threads of a flood see.
helpers::Tracer Onlook() {
    static auto& memory = *new platform::SharedMemory;
    std::uint32_t error = 0;
    if (memory.Data() == nullptr) {
        memory.Attach(helpers::process_singleton::Name(), false, sizeof(helpers::BlockLayout),
                      error);
    }
    return helpers::Tracer(static_cast<helpers::BlockLayout*>(memory.Data())->tracer);
}

// Whether the log follows: whatever the threads of a flood say until they look again finds room, so
// that nothing is dropped however seldom a busy machine runs the log's thread.
bool HasRoom(const helpers::Tracer& tracer) {
    const std::uint32_t current = tracer.Current();
    return tracer.Buffer(1 - current).IsEmpty() ||
           tracer.Buffer(current).Used() < helpers::kRecordAreaBytes / 2;
}

void SayFromThread(SayFunction* say, unsigned thread, unsigned from, unsigned to) {
    constexpr unsigned kBurst = 12;  // messages per thread and millisecond: below capacity
    const helpers::Tracer tracer = Onlook();
    const std::wstring padding(7 * thread, L'p');
    for (unsigned i = from; i < to; ++i) {
        const std::wstring text =
            std::to_wstring(thread) + L" " + std::to_wstring(i) + L" " + padding + L"end";
        say(2, text.c_str());
        if (i % kBurst != 0) continue;
        do {
            platform::SleepMs(1);
        } while (!HasRoom(tracer));
    }
}

// "flood:module:threads:messages"
void Flood(const Words& words) {
    const unsigned count = Number(words[2]);
    const unsigned each = Number(words[3]) / count;
    static_cast<void>(Onlook());  // before there are threads
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < count; ++i) {
        threads.emplace_back(&SayFromThread, modules[words[1]].say, i, 0u, each);
    }
    for (std::thread& thread : threads) thread.join();
}

// "flood_on:module:threads": goes on until the process ends; comes back when it runs.
void FloodOn(const Words& words) {
    static std::atomic<unsigned> running{0};
    const unsigned count = Number(words[2]);
    static_cast<void>(Onlook());  // before there are threads
    for (unsigned i = 0; i < count; ++i) {
        std::thread([say = modules[words[1]].say, i] {
            SayFromThread(say, i, 0, 50);
            running.fetch_add(1, std::memory_order_release);  // pairs with the acquire below
            SayFromThread(say, i, 50, 1u << 30);
        }).detach();
    }
    while (running.load(std::memory_order_acquire) < count) platform::SleepMs(1);
}

// "exit_thread:code": another thread ends the process while this one waits.
void ExitFromThread(const Words& words) {
    std::thread([code = Number(words[1])] { ExitProcessNow(static_cast<int>(code)); }).join();
}

// "cycle:module:count:text": loads the module, says the text and frees it; without a text at once.
// Says what `count` cycles have added after a quarter as many.
void Cycle(const Words& words) {
    const auto once = [&words] {
        const Module module = Load(words[1]);
        if (!words[3].empty()) {
            module.say(2, platform::ToWide(words[3], platform::CodePage::kUtf8).c_str());
        }
        test_platform::UnloadModule(module.handle);
        if (!words[3].empty()) AwaitGone(words[1]);
    };
    // Whatever the system keeps from the first times on.
    for (unsigned i = 0; i < Number(words[2]) / 4; ++i) once();
    AwaitGone(words[1]);
    const test_support::Usage before = test_support::LeastUsage(20, {});
    for (unsigned i = 0; i < Number(words[2]); ++i) once();
    AwaitGone(words[1]);
    const test_support::Usage after = test_support::LeastUsage(500, before);
    std::printf("%s\n", test_support::Growth(before, after).c_str());
}

void Peek(const Words&) {
    helpers::process_singleton view;
    if (view.Attach(false) != helpers::process_singleton::Outcome::kOpened) {
        std::printf("no block\n");
        return;
    }
    const helpers::TracerLayout& tracer = view.Block()->tracer;
    std::uint64_t thread = 0;
    std::memcpy(&thread, tracer.thread, sizeof thread);
    std::printf("references %u running %d closed %d level %u output %d thread %s\n",
                view.Block()->references - 1, tracer.running, tracer.closed, tracer.levelMask,
                tracer.logToOutput, thread != 0 ? "yes" : "no");
    view.Detach();
}

void Priority(const Words&) {
    if (!CanRunBelowOwn()) {
        std::printf("none below\n");
        return;
    }
    helpers::process_singleton view;
    if (view.Attach(false) != helpers::process_singleton::Outcome::kOpened) return;
    std::uint64_t thread = 0;
    std::memcpy(&thread, view.Block()->tracer.thread, sizeof thread);
    std::printf("below by %d\n", PriorityBelowOwn(thread));
    view.Detach();
}

// "foreign:size:byte": a block of the tracer's name that is none, kept to the process's end.
void Foreign(const Words& words) {
    std::uint32_t error = 0;
    foreignBlock.Attach(helpers::process_singleton::Name(), true, Number(words[1]), error);
    std::memset(foreignBlock.Data(), static_cast<int>(Number(words[2])), Number(words[1]));
}

bool HasLog() {
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(OwnFolder() / "Logs", ignored)) {
        if (fs::file_size(entry.path(), ignored) > 0) return true;
    }
    return false;
}

void AwaitLog(const Words&) {
    for (int i = 0; i < 20'000 && !HasLog(); ++i) platform::SleepMs(1);
}

// Until something has been said, by whomever.
void AwaitRecord(const Words&) {
    helpers::process_singleton view;
    if (view.Attach(false) != helpers::process_singleton::Outcome::kOpened) return;
    const helpers::Tracer tracer(view.Block()->tracer);
    for (int i = 0; i < 20'000 && tracer.Current() == 0 && tracer.Buffer(0).IsEmpty(); ++i) {
        platform::SleepMs(1);
    }
    view.Detach();
}

const std::map<std::string, std::function<void(const Words&)>> kCommands = {
    {"load", LoadCommand},
    {"free", Free},
    {"say", Say},
    {"say_long", SayLong},
    {"say_numbered", SayNumbered},
    {"flood", Flood},
    {"flood_on", FloodOn},
    {"exit", [](const Words& words) { ExitProcessNow(static_cast<int>(Number(words[1]))); }},
    {"exit_thread", ExitFromThread},
    {"die", [](const Words& words) { platform::EndProcess(static_cast<int>(Number(words[1]))); }},
    {"cycle", Cycle},
    {"attached",
     [](const Words& words) {
         std::printf("%s\n", modules[words[1]].attached() ? "attached" : "not attached");
     }},
    {"peek", Peek},
    {"process", [](const Words&) { std::printf("%u\n", platform::CurrentProcessId()); }},
    {"priority", Priority},
    {"foreign", Foreign},
    {"await_log", AwaitLog},
    {"await_record", AwaitRecord},
    {"remove_logs",
     [](const Words&) {
         std::error_code ignored;  // a file that is open stays on some systems
         fs::remove_all(OwnFolder() / "Logs", ignored);
     }},
};

}  // namespace

bool RunCommand(const Words& words) {
    const auto command = kCommands.find(words[0]);
    if (command == kCommands.end()) return false;
    command->second(words);
    return true;
}

}  // namespace trace_host
