#include "host/Soak.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <list>
#include <mutex>
#include <random>
#include <thread>

#include "support/Text.h"
#include "support/Usage.h"

namespace {

using Clock = std::chrono::steady_clock;
using test_support::PathFromUtf8;
using test_support::Utf8;
using test_support::Wide;

// Lines per thread are kept at about this many a second, so that a night's log fits on a disk.
constexpr auto kLinePause = std::chrono::milliseconds(10);

class Worker {
public:
    Worker(int number, tarnex::GlobalFXFactory& factory, std::mutex& oneCall,
           std::shared_ptr<fx::IBaseFX> shared, const std::vector<std::wstring>& scripts)
        : number_(number),
          factory_(factory),
          oneCall_(oneCall),
          shared_(std::move(shared)),
          scripts_(scripts),
          random_(static_cast<unsigned>(number)) {}

    void Run(Clock::time_point end) {
        Clock::time_point nextLine = Clock::now();
        while (Clock::now() < end) {
            for (int i = 0; i < 50; ++i) UseProperties();
            UseFactory();
            if (number_ == 0) UseFreshScript();
            if (Clock::now() >= nextLine) {
                SayLine();
                nextLine += kLinePause;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    long long calls = 0;
    long long said = 0;
    long long wrong = 0;
    long long fresh = 0;

private:
    void Expect(bool fine) {
        ++calls;
        if (!fine) ++wrong;
    }

    // Any thread, no lock of ours: the set takes its own.
    void UseProperties() {
        fx::IBaseFX& effect = *shared_;
        const float value = static_cast<float>(random_() % 100);
        float seen = -1;
        Expect(effect.SetProperty(L"Radius", value) == base_types::eSuccess);
        Expect(effect.GetProperty(L"Radius", seen) == base_types::eSuccess);
        Expect(seen >= 0 && seen < 100);
        Expect(effect.SetProperty(L"KeepEdges", value < 50) == base_types::eSuccess);
        std::int32_t passes = 0;
        Expect(effect.GetPropertyDefault(L"Passes", &passes) == base_types::eSuccess);
    }

    // Caller serialises.
    void UseFactory() {
        const std::lock_guard lock(oneCall_);
        std::shared_ptr<fx::IBaseFX> effect;
        const std::uint64_t index = random_() % factory_.GetFXCount();
        Expect(factory_.CreateFX(index, effect) == fx::eSuccess && effect != nullptr);
        Expect(!factory_.GetFXName(index).empty());
        const std::wstring& script = scripts_[random_() % scripts_.size()];
        switch (random_() % 4) {
            case 0:
                Expect(factory_.CreateFX(script, effect) == fx::eSuccess);
                break;
            case 1: {  // every composition that is removed comes back under its old index
                const std::uint64_t count = factory_.GetFXCount();
                Expect(factory_.RemoveEffect(effect->GetDescriptor()->id) == tarnex::eSuccess);
                Expect(factory_.GetFXCount() == count);
                break;
            }
            case 2: {
                const tarnex::_eError code = factory_.RegisterEffect(script, true);
                Expect(code == tarnex::eSuccess || code == tarnex::eCouldNotRegisterNewComposition);
                break;
            }
            default: {
                std::list<tarnex::EffectRecord> records;
                Expect(factory_.GetEffects(records) == tarnex::eSuccess);
                Expect(records.size() == factory_.GetFXCount());
            }
        }
    }

    // One that nobody has seen before, and the archive that is written beside it, where that is on.
    // Every tenth is registered, which is there to stay.
    void UseFreshScript() {
        const bool isRegistered = ++rounds_ % 10 == 0;
        const std::filesystem::path file =
            PathFromUtf8(Utf8(scripts_[0])).parent_path() / ("fresh" + std::to_string(rounds_));
        const std::filesystem::path script = std::filesystem::path(file).concat(".txt");
        const std::filesystem::path archive = std::filesystem::path(file).concat(".mxf");
        std::ofstream(script) << "[SETUP]\nNAME = \"Fresh " << rounds_
                              << "\"\nCATEGORY = \"Soak\"\n[SOURCES]\nBack = INPUT\n[EFFECTS]\n"
                                 "B = \"Blur\"\n[STRUCTURE]\nOUTPUT = B(Back)\n";
        const std::lock_guard lock(oneCall_);
        std::shared_ptr<fx::IBaseFX> effect;
        Expect(factory_.CreateFX(Wide(Utf8(script)), effect) == fx::eSuccess);
        // Where archives are saved they are not read.
        Expect(std::filesystem::exists(archive));
        if (isRegistered) {
            Expect(factory_.RegisterEffect(Wide(Utf8(script)), true) == tarnex::eSuccess);
            ++fresh;
        }
        std::filesystem::remove(script);
        std::filesystem::remove(archive);
    }

    void SayLine() {
        std::int32_t value = 0;
        const std::wstring name =
            L"soak " + std::to_wstring(number_) + L" " + std::to_wstring(said) + L" ";
        Expect(shared_->GetProperty(name, value) == base_types::ePropertyNotFound);
        ++said;
    }

    int number_;
    tarnex::GlobalFXFactory& factory_;
    std::mutex& oneCall_;
    std::shared_ptr<fx::IBaseFX> shared_;
    const std::vector<std::wstring>& scripts_;
    std::mt19937 random_;
    int rounds_ = 0;
};

// The index of the effect of that name.
std::uint64_t IndexOf(tarnex::GlobalFXFactory& factory, const std::wstring& name) {
    std::uint64_t index = 0;
    while (index < factory.GetFXCount() && factory.GetFXName(index) != name) ++index;
    return index;
}

void RunAll(std::vector<Worker>& workers, Clock::time_point end) {
    std::vector<std::thread> threads;
    for (Worker& worker : workers) {
        threads.emplace_back([&worker, end] { worker.Run(end); });
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace

void Soak(tarnex::GlobalFXFactory& factory, int seconds, const std::vector<std::string>& scripts,
          const std::function<void(const std::string&)>& say) {
    std::vector<std::wstring> paths;
    for (const std::string& script : scripts) paths.push_back(Wide(script));
    std::shared_ptr<fx::IBaseFX> shared;
    factory.CreateFX(IndexOf(factory, L"Blur"), shared);
    for (const std::wstring& path : paths) factory.RegisterEffect(path, true);

    std::mutex oneCall;
    std::vector<Worker> workers;
    for (int i = 0; i < kSoakThreads; ++i) workers.emplace_back(i, factory, oneCall, shared, paths);
    const Clock::time_point begin = Clock::now();
    RunAll(workers, begin + std::chrono::milliseconds(seconds * 200));
    const test_support::Usage before = test_support::LeastUsage(20, {});
    const long long registered = workers[0].fresh;
    RunAll(workers, begin + std::chrono::seconds(seconds));
    const test_support::Usage after = test_support::LeastUsage(500, before);

    long long calls = 0;
    long long wrong = 0;
    std::string said = "said";
    for (const Worker& worker : workers) {
        calls += worker.calls;
        wrong += worker.wrong;
        said += " " + std::to_string(worker.said);
    }
    say("calls " + std::to_string(calls));
    say(said);
    say(test_support::Growth(before, after));
    say("wrong " + std::to_string(wrong));
    say("fresh " + std::to_string(workers[0].fresh - registered));
}
