// Registering many composition scripts, against opening, reading and closing the same files.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "compositions/CompositionFactory.h"
#include "platform/File.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kScripts = 10'000;
constexpr int kThousand = 1'000;
constexpr std::size_t kScriptBytes = 1'600;

std::string Script(int number) {
    std::string text = "[SETUP]\nNAME = \"Composition " + std::to_string(number) +
                       "\"\nCATEGORY = \"Transitions\"\nSPEED = 2\nIS_FILTER = FALSE\n"
                       "[SOURCES]\nFirst = INPUT\nSecond = INPUT\nLogo = BITMAP : \"logo.png\"\n"
                       "[EFFECTS]\nSoft = \"Blur\\Video\"\nLift = \"Levels\\Video\"\nSum = MIX\n"
                       "[STRUCTURE]\nOUTPUT = Sum( First, Lift( Soft( Second ) ), Logo )\n"
                       "[PROPERTIES]\n";
    for (int i = 0; text.size() < 1'000; ++i) {
        text += "READ WRITE ENVELOPED \"Amount " + std::to_string(i) + "\" = 0.75\n";
    }
    text +=
        "[MAPPING]\nWRITE \"Amount 0\" = Soft.\"Radius\"\nWRITE \"Amount 1\" = Lift.\"White\"\n"
        "[ENVELOPES]\nFade = { 3 }, { 0, 0, LINEAR }, { 12, 0.5, COSINE }, { 25, HOLD }\n"
        "[TIMELINE]\nLift.\"Gain\" = Fade\nLift.\"Gamma\" = 1.5\n";
    text += ';';
    text.resize(std::max(text.size(), kScriptBytes), '-');
    return text;
}

// Scripts in a folder of their own, gone at the end.
class Scripts {
public:
    Scripts() : folder_(std::filesystem::temp_directory_path() / "tarnex_bench_scripts") {
        std::filesystem::create_directories(folder_);
        for (int i = 0; i < kScripts; ++i) {
            const std::filesystem::path path = folder_ / (std::to_string(i) + ".txt");
            std::ofstream(path, std::ios::binary) << Script(i);
            const std::string text = path.string();
            paths_.emplace_back(text.begin(), text.end());
        }
    }
    ~Scripts() { std::filesystem::remove_all(folder_); }

    const std::vector<std::wstring>& Paths() const { return paths_; }

private:
    std::filesystem::path folder_;
    std::vector<std::wstring> paths_;
};

double SecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

double ReadAll(const std::vector<std::wstring>& paths) {
    const auto begin = Clock::now();
    std::vector<char> buffer(1 << 16);
    for (const std::wstring& path : paths) {
        platform::InputFile file;
        if (file.Open(path)) benchmark::DoNotOptimize(file.Read(buffer.data(), buffer.size()));
    }
    return SecondsSince(begin);
}

struct Registration {
    double seconds = 0;
    double first = 0;  // the first and the last thousand
    double last = 0;
};

Registration RegisterAll(const std::vector<std::wstring>& paths) {
    compositions::CompositionFactory factory(L"");
    Registration run;
    const auto begin = Clock::now();
    for (int i = 0; i < kScripts; i += kThousand) {
        const auto thousand = Clock::now();
        for (int k = i; k < i + kThousand; ++k) {
            std::wstring name;
            if (!factory.RegisterComposition(paths[static_cast<std::size_t>(k)], true, name)) {
                std::fprintf(stderr, "script %d is faulty\n", k);
                std::exit(1);
            }
        }
        run.last = SecondsSince(thousand);
        if (i == 0) run.first = run.last;
    }
    run.seconds = SecondsSince(begin);
    return run;
}

void BM_RegisterAgainstReadingFiles(benchmark::State& state) {
    const Scripts scripts;
    ReadAll(scripts.Paths());  // into the system's cache, for both
    RegisterAll(scripts.Paths());
    double registered = 0;
    double floor = 0;
    std::vector<double> growth;
    for (auto _ : state) {
        const Registration run = RegisterAll(scripts.Paths());
        registered += run.seconds;
        growth.push_back(run.last / run.first);
        floor += ReadAll(scripts.Paths());
        state.SetIterationTime(run.seconds);
    }
    std::sort(growth.begin(), growth.end());
    state.counters["ratio"] = registered / floor;
    state.counters["last_thousand_to_first"] = growth[growth.size() / 2];
    state.counters["microseconds_each"] =
        registered / static_cast<double>(state.iterations()) / kScripts * 1e6;
}

BENCHMARK(BM_RegisterAgainstReadingFiles)->Iterations(10)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
