// `tarnexctl check` over a thousand typical scripts against the reader alone over the same ones:
// the whole command with its files, and the check of a script in memory.

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include "ReaderScripts.h"
#include "check/ScriptCheck.h"
#include "compositions/CompScript.h"
#include "compositions/CompositionLoader.h"
#include "frame/Run.h"
#include "frame/Text.h"

namespace {

using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

constexpr int kScripts = 1000;

// The typical script under a name of its own.
std::string Script(int number) {
    std::string text = bench::TypicalScript();
    const std::string name = "Lower Third";
    return text.replace(text.find(name), name.size(), name + " " + std::to_string(number));
}

// A folder of scripts, gone at the end.
class ScriptFolder {
public:
    ScriptFolder() {
        path_ = fs::temp_directory_path() / "tarnex bench check";
        fs::create_directories(path_);
        for (int i = 0; i < kScripts; ++i) {
            const fs::path file = path_ / (std::to_string(i) + ".txt");
            std::ofstream(file, std::ios::binary) << Script(i);
            files_.push_back(tarnexctl::FromPath(file));
            paths_.push_back(file.wstring());
        }
    }
    ~ScriptFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    ScriptFolder(const ScriptFolder&) = delete;
    ScriptFolder& operator=(const ScriptFolder&) = delete;

    const std::vector<std::string>& Files() const { return files_; }
    const std::vector<std::wstring>& Paths() const { return paths_; }

private:
    fs::path path_;
    std::vector<std::string> files_;
    std::vector<std::wstring> paths_;
};

const ScriptFolder& Folder() {
    static const ScriptFolder folder;
    return folder;
}

// The quickest of the runs, in seconds; feeds the benchmark's loop.
template <typename Work>
double Best(benchmark::State& state, Work&& work) {
    double best = std::numeric_limits<double>::max();
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        work();
        const std::chrono::duration<double> took = Clock::now() - start;
        best = std::min(best, took.count());
        state.SetIterationTime(took.count());
    }
    return best;
}

double filesRead = 0;
double textRead = 0;

void ReaderOverFiles(benchmark::State& state) {
    bool whole = true;
    filesRead = Best(state, [&] {
        for (const std::wstring& path : Folder().Paths()) {
            whole = whole && compositions::ReadCompositionScript(path)->GetReadStatus() == 0;
        }
    });
    if (!whole) state.SkipWithError("a script does not read");
}

void CheckOverFiles(benchmark::State& state) {
    std::vector<std::string> arguments{"check", "--strict", "--format", "short"};
    arguments.insert(arguments.end(), Folder().Files().begin(), Folder().Files().end());
    int code = 0;
    const double seconds = Best(state, [&] { code |= tarnexctl::Run(arguments); });
    if (code != 0) state.SkipWithError("a script has mistakes");
    state.counters["times_reader"] = seconds / filesRead;
}

void ReaderOverText(benchmark::State& state) {
    const std::string text = bench::TypicalScript();
    textRead = Best(state, [&] {
        const compositions::CompositionScript script{std::string_view(text)};
        benchmark::DoNotOptimize(script.GetReadStatus());
    });
}

void CheckOverText(benchmark::State& state) {
    const std::string text = bench::TypicalScript();
    tarnexctl::ScriptChecker checker;
    bool clean = true;
    const double seconds =
        Best(state, [&] { clean = clean && checker.Check(text).diagnostics.IsEmpty(); });
    if (!clean) state.SkipWithError("the script has mistakes");
    state.counters["times_reader"] = seconds / textRead;
}

}  // namespace

BENCHMARK(ReaderOverFiles)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(CheckOverFiles)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReaderOverText)->UseManualTime();
BENCHMARK(CheckOverText)->UseManualTime();

BENCHMARK_MAIN();
