// Reading composition scripts: typical ones against a plain tokenising pass and against the same
// information as TOML, and hostile ones from 1 KB to 10 MB, with the growth of the time per tenfold
// size.

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "HostileScripts.h"
#include "ReaderScripts.h"
#include "Tokenising.h"
#include "compositions/CompScript.h"

#define TOML_HEADER_ONLY 1
#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

namespace {

// The thread's processor time in seconds: other programs on the machine do not count.
double Now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// Runs that take this long together are timed as one: asking for the time costs as much as reading
// a small text.
constexpr double kTimedTogether = 200e-6;

template <typename Work>
int RunsTogether(Work&& work) {
    int runs = 1;
    for (;; runs *= 2) {
        const double start = Now();
        for (int run = 0; run < runs; ++run) work();
        if (Now() - start >= kTimedTogether) return runs;
    }
}

// One run in the quickest round of that many, in seconds, and as a counter; an iteration is a
// round, and `prepare` goes before it.
template <typename Prepare, typename Work>
double BestOf(benchmark::State& state, int runs, Prepare prepare, Work&& work) {
    double best = std::numeric_limits<double>::max();
    for (auto _ : state) {
        prepare();
        const double start = Now();
        for (int run = 0; run < runs; ++run) work();
        const double took = Now() - start;
        best = std::min(best, took / runs);
        state.SetIterationTime(took);
    }
    state.counters["ns"] = best * 1e9;
    return best;
}

template <typename Work>
double Best(benchmark::State& state, Work&& work) {
    return BestOf(
        state, RunsTogether(work), [] {}, work);
}

// Texts that a host reads one after the other are all different; one text read again and again, as
// in the second set, is what the processor has learnt by heart.
struct Typical {
    const char* name;
    std::vector<std::string> scripts;
    std::vector<std::string> documents;  // the same information as TOML
    double tokenising = 0;               // seconds for all of them
    double reading = 0;
};

Typical MakeTypical(const char* name, unsigned count) {
    Typical typical{name, {}, {}};
    for (unsigned variant = 0; variant < count; ++variant) {
        typical.scripts.push_back(bench::Renamed(bench::TypicalScript(), variant));
        typical.documents.push_back(bench::Renamed(bench::TypicalToml(), variant));
    }
    return typical;
}

double Average(const std::vector<std::string>& texts, double total) {
    return total / static_cast<double>(texts.size());
}

void TokenisingFloor(benchmark::State& state, Typical& typical) {
    std::vector<bench::Token> tokens;
    std::size_t bytes = 0;
    std::size_t count = 0;
    typical.tokenising = Best(state, [&] {
        bytes = count = 0;
        for (const std::string& text : typical.scripts) {
            bench::Tokenise(text, tokens);
            bytes += text.size();
            count += tokens.size();
        }
    });
    state.counters["ns"] = Average(typical.scripts, typical.tokenising * 1e9);
    state.counters["bytes"] = Average(typical.scripts, static_cast<double>(bytes));
    state.counters["tokens"] = Average(typical.scripts, static_cast<double>(count));
}

void Reading(benchmark::State& state, Typical& typical) {
    bool isRead = true;
    typical.reading = Best(state, [&] {
        for (const std::string& text : typical.scripts) {
            const compositions::CompositionScript script(text);
            isRead = isRead && script.GetReadStatus() == 0;
        }
    });
    if (!isRead) state.SkipWithError("a script does not read");
    state.counters["ns"] = Average(typical.scripts, typical.reading * 1e9);
    state.counters["times_floor"] = typical.reading / typical.tokenising;
}

void AsToml(benchmark::State& state, Typical& typical) {
    bool isParsed = true;
    const double toml = Best(state, [&] {
        for (const std::string& text : typical.documents) {
            isParsed = isParsed && toml::parse(text).succeeded();
        }
    });
    if (!isParsed) state.SkipWithError("a document does not parse");
    state.counters["ns"] = Average(typical.documents, toml * 1e9);
    state.counters["times_script"] = toml / typical.reading;
}

constexpr int kColdRuns = 12;

// More than most processors' caches hold together.
constexpr std::size_t kMoreThanCached = 64u << 20;

// Leaves little of what was read or written before in the processor's caches.
void EmptyCaches() {
    static std::vector<char> memory(kMoreThanCached);
    for (std::size_t at = 0; at < memory.size(); at += 64) ++memory[at];
    benchmark::DoNotOptimize(memory.data());
}

// What is done at least with a text that is read as wide characters, one by one: it is widened, and
// each is looked at once.
void WidenAndLook(const std::string& text) {
    const std::wstring wide(text.begin(), text.end());
    std::uint32_t sum = 0;
    for (const wchar_t c : wide) sum += static_cast<std::uint32_t>(c);
    benchmark::DoNotOptimize(sum);
}

// All sizes begin alike: otherwise short texts would be read from the caches again and again, and
// long ones never. The code is not in the caches either, which weighs most on the smallest size;
// the counts of `./dev bench growth` are free of that.
void Hostile(benchmark::State& state, const bench::Family& family) {
    struct Times {
        double reading;
        double floor;
    };
    static std::map<std::pair<std::string, std::int64_t>, Times> measured;
    const std::string text = family.make(static_cast<std::size_t>(state.range(0)));
    std::int32_t status = -1;
    double floor = std::numeric_limits<double>::max();
    const auto prepare = [&] {
        EmptyCaches();
        const double start = Now();
        WidenAndLook(text);
        floor = std::min(floor, Now() - start);
        EmptyCaches();
    };
    const double reading = BestOf(state, 1, prepare, [&] {
        const compositions::CompositionScript script(text);
        status = script.GetReadStatus();
    });
    if (status != family.status) state.SkipWithError("read with another status");
    const auto smaller = measured.find({family.name, state.range(0) / 10});
    const bool isFirst = smaller == measured.end();
    state.counters["growth"] = isFirst ? 0 : reading / smaller->second.reading;
    state.counters["floor_growth"] = isFirst ? 0 : floor / smaller->second.floor;
    state.counters["times_floor"] = reading / floor;
    state.counters["ns_per_byte"] = reading * 1e9 / static_cast<double>(text.size());
    measured[{family.name, state.range(0)}] = {reading, floor};
}

}  // namespace

int main(int argc, char** argv) {
    // Memory that was freed is kept for the next run: large texts would pay for fresh pages in each
    // run, small ones never, and that is no growth of the reader's.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    Typical sets[] = {MakeTypical("Different", 256), MakeTypical("Repeated", 1)};
    for (Typical& typical : sets) {
        const auto add = [&](const char* what, void (*run)(benchmark::State&, Typical&)) {
            const std::string name = std::string("Typical/") + typical.name + "/" + what;
            benchmark::RegisterBenchmark(name.c_str(), [run, &typical](benchmark::State& state) {
                run(state, typical);
            })->UseManualTime();
        };
        add("tokenising_floor", TokenisingFloor);
        add("reading", Reading);
        add("as_toml", AsToml);
    }
    for (const bench::Family& family : bench::HostileFamilies()) {
        benchmark::RegisterBenchmark(("Hostile/" + family.name).c_str(),
                                     [&family](benchmark::State& state) { Hostile(state, family); })
            ->RangeMultiplier(10)
            ->Range(1'000, 10'000'000)
            ->UseManualTime()
            ->Iterations(kColdRuns);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
