// What the global factory costs over doing its work by hand: start-up over many plug-in libraries,
// and creating effects by global index. The counter "ratio" is the median time over the median
// floor, both measured in turn.

#include <benchmark/benchmark.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
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

constexpr int kMostPlugins = 64;

std::string CopyName(int number) {
    return "copy" + std::to_string(number) + ".plugin";
}

double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double SecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

void Require(bool fine, const char* what) {
    if (!fine) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

// A folder of distinct copies of one plug-in, made once per run: the loader takes each for another
// library, and what is loaded must not be written again.
const fs::path& CopiesFolder() {
    static const fs::path folder = [] {
        const fs::path build = fs::path(platform::ExecutablePath()).parent_path().parent_path();
        const fs::path copies = build / "bench_plugins";
        fs::remove_all(copies);
        fs::create_directories(copies);
        for (int i = 0; i < kMostPlugins; ++i) {
            fs::copy_file(build / "test_plugins" / "plain.plugin", copies / CopyName(i));
        }
        return copies;
    }();
    return folder;
}

// The first so many of the copies.
class PluginCopies {
public:
    explicit PluginCopies(int count) : folder_(CopiesFolder()) {
        for (int i = 0; i < count; ++i) {
            const std::wstring name = fs::path(CopyName(i)).wstring();
            list_ += name + L"|";
            paths_.push_back(folder_.wstring() + L"\\" + name);
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
    std::vector<double> times;
    std::vector<double> floors;
    for (auto _ : state) {
        floors.push_back(SecondsInFreshProcess([&] { StartByHand(plugins); }));
        const double seconds = SecondsInFreshProcess([&] { StartGlobalFactory(plugins); });
        times.push_back(seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["ratio"] = Median(times) / Median(floors);
}
BENCHMARK(BM_StartUp)
    ->Arg(kMostPlugins)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->MinTime(1.0);

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
    std::vector<double> times;
    std::vector<double> floors;
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
            for (std::size_t owner = 0; owner < factories.size(); ++owner) {
                for (std::uint64_t index = 0; index < kEffectsPerPlugin; ++index) {
                    for (std::size_t i = 0; askCounts && i <= owner; ++i) {
                        benchmark::DoNotOptimize(factories[i]->GetFXCount());
                    }
                    Require(factories[owner]->CreateFX(index, effect) == fx::eSuccess, "no effect");
                    effect.reset();
                }
            }
        }
        floors.push_back(SecondsSince(begin));
        times.push_back(seconds);
        state.SetIterationTime(seconds / static_cast<double>(kRounds * effects));
    }
    state.counters["ratio"] = Median(times) / Median(floors);
}
BENCHMARK(BM_CreateAndRelease)
    ->ArgNames({"plugins", "floor_asks_counts"})
    ->Args({8, 0})
    ->Args({kMostPlugins, 1})
    ->UseManualTime()
    ->Iterations(400);

}  // namespace

BENCHMARK_MAIN();
