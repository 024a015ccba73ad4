// What the global factory costs over doing its work by hand: start-up over many plug-in libraries,
// and creating effects by global index. The counter "ratio" is time over floor of the same run.

#include <benchmark/benchmark.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/Module.h"
#include "tarnex/GlobalFxFactory.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Factories = std::vector<std::shared_ptr<fx::IVorelFXFactory>>;

constexpr std::uint64_t kEffectsPerPlugin = 2;

double SecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

void Require(bool fine, const char* what) {
    if (!fine) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

// A folder of distinct copies of one plug-in: the loader takes each for another library.
class PluginCopies {
public:
    explicit PluginCopies(int count) {
        const fs::path build = fs::path(platform::ExecutablePath()).parent_path().parent_path();
        folder_ = build / "bench_plugins";
        fs::create_directories(folder_);
        for (int i = 0; i < count; ++i) {
            const std::string name = "copy" + std::to_string(i) + ".plugin";
            fs::copy_file(build / "test_plugins" / "plain.plugin", folder_ / name,
                          fs::copy_options::overwrite_existing);
            list_ += fs::path(name).wstring() + L"|";
            paths_.push_back(folder_.wstring() + L"\\" + fs::path(name).wstring());
        }
    }

    std::wstring Folder() const { return folder_.wstring(); }
    const std::wstring& List() const { return list_; }

    Factories LoadByHand() const {
        Factories factories;
        for (const std::wstring& path : paths_) {
            void* module = platform::LoadModule(path);
            Require(module != nullptr, "a copied plug-in does not load");
            auto* entry = reinterpret_cast<tarnex::PluginEntry*>(
                platform::ResolveSymbol(module, "CreateFactory"));
            Require(entry(factories.emplace_back()) == fx::eSuccess, "no factory");
        }
        return factories;
    }

private:
    fs::path folder_;
    std::wstring list_;
    std::vector<std::wstring> paths_;
};

void StartByHand(const PluginCopies& plugins) {
    for (const auto& factory : plugins.LoadByHand()) {
        for (std::uint64_t index = 0; index < kEffectsPerPlugin; ++index) {
            std::shared_ptr<fx::IBaseFX> effect;
            Require(factory->CreateFX(index, effect) == fx::eSuccess, "no effect");
        }
    }
}

void StartGlobalFactory(const PluginCopies& plugins) {
    tarnex::GlobalFXFactory factory(plugins.Folder(), plugins.List(), L"", 0);
    Require(factory.GetFXCount() != 0, "no effects");
}

// The time of `start` in a process that has loaded nothing yet: a child forked for it alone.
template <typename Start>
double SecondsInFreshProcess(Start&& start) {
    int ends[2];
    Require(pipe(ends) == 0, "no pipe");
    const pid_t child = fork();
    if (child == 0) {
        const auto begin = Clock::now();
        start();
        const double seconds = SecondsSince(begin);
        _exit(write(ends[1], &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
    }
    double seconds = 0;
    Require(read(ends[0], &seconds, sizeof seconds) == sizeof seconds, "the child failed");
    waitpid(child, nullptr, 0);
    close(ends[0]);
    close(ends[1]);
    return seconds;
}

void BM_StartUp(benchmark::State& state) {
    const PluginCopies plugins(static_cast<int>(state.range(0)));
    double total = 0;
    double floor = 0;
    for (auto _ : state) {
        floor += SecondsInFreshProcess([&] { StartByHand(plugins); });
        const double seconds = SecondsInFreshProcess([&] { StartGlobalFactory(plugins); });
        total += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["ratio"] = total / floor;
}
BENCHMARK(BM_StartUp)->Arg(64)->UseManualTime()->Unit(benchmark::kMicrosecond)->MinTime(1.0);

// Creates and releases every effect once, through the factory and by hand in turn.
// `askCounts`: the floor, too, asks each plug-in up to the effect's own for its count.
void BM_CreateAndRelease(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const bool askCounts = state.range(1) != 0;
    const PluginCopies plugins(count);
    const Factories factories = plugins.LoadByHand();
    tarnex::GlobalFXFactory global(plugins.Folder(), plugins.List(), L"", 0);
    const std::uint64_t effects = global.GetFXCount();
    Require(effects == kEffectsPerPlugin * static_cast<std::uint64_t>(count), "effects missing");
    constexpr int kRounds = 50;
    double total = 0;
    double floor = 0;
    std::shared_ptr<fx::IBaseFX> effect;
    for (auto _ : state) {
        auto begin = Clock::now();
        for (int round = 0; round < kRounds; ++round) {
            for (std::uint64_t index = 0; index < effects; ++index) {
                Require(global.CreateFX(index, effect) == fx::eSuccess, "no effect");
                effect.reset();
            }
        }
        const double seconds = SecondsSince(begin);
        begin = Clock::now();
        for (int round = 0; round < kRounds; ++round) {
            for (std::uint64_t index = 0; index < effects; ++index) {
                const std::uint64_t owner = index / kEffectsPerPlugin;
                for (std::uint64_t i = 0; askCounts && i <= owner; ++i) {
                    benchmark::DoNotOptimize(factories[i]->GetFXCount());
                }
                Require(
                    factories[owner]->CreateFX(index % kEffectsPerPlugin, effect) == fx::eSuccess,
                    "no effect");
                effect.reset();
            }
        }
        floor += SecondsSince(begin);
        total += seconds;
        state.SetIterationTime(seconds / static_cast<double>(kRounds * effects));
    }
    state.counters["ratio"] = total / floor;
}
BENCHMARK(BM_CreateAndRelease)
    ->ArgNames({"plugins", "floor_asks_counts"})
    ->Args({8, 0})
    ->Args({64, 1})
    ->UseManualTime()
    ->Iterations(400);

}  // namespace

BENCHMARK_MAIN();
