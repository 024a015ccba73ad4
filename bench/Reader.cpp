// Reading composition scripts: typical ones against a plain tokenising pass and against the same
// information as TOML, and hostile ones from 1 KB to 10 MB, with the growth per tenfold size: of
// the time, and of what it is in the time of a floor. Ten times the text no longer fits into a
// cache that the smaller one did fit into, and then the floor's own time grows forty times and
// more.

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

// One run in the quickest round, in seconds, and as a counter; an iteration is a round.
template <typename Work>
double Best(benchmark::State& state, Work&& work) {
    const int runs = RunsTogether(work);
    double best = std::numeric_limits<double>::max();
    for (auto _ : state) {
        const double start = Now();
        for (int run = 0; run < runs; ++run) work();
        const double took = Now() - start;
        best = std::min(best, took / runs);
        state.SetIterationTime(took);
    }
    state.counters["ns"] = best * 1e9;
    return best;
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

// The least that reading such a text costs: its characters are made wide and looked at once, and
// the description that they ask for is made and let go.
void ReadAsFloor(const std::string& text, const compositions::CompositionDescription& description) {
    const std::wstring wide(text.begin(), text.end());
    benchmark::DoNotOptimize(wide.find(L'\1'));
    const compositions::CompositionDescription copy(description);
    benchmark::DoNotOptimize(&copy);
}

// One run in the quickest of a few rounds, in seconds.
template <typename Work>
double Quickest(Work&& work) {
    const int runs = RunsTogether(work);
    double best = std::numeric_limits<double>::max();
    for (int round = 0; round < 5; ++round) {
        const double start = Now();
        for (int run = 0; run < runs; ++run) work();
        best = std::min(best, (Now() - start) / runs);
    }
    return best;
}

struct HostileTimes {
    double reading;
    double floor;
};

void Hostile(benchmark::State& state, const bench::Family& family) {
    static std::map<std::pair<std::string, std::int64_t>, HostileTimes> measured;
    const std::string text = family.make(static_cast<std::size_t>(state.range(0)));
    std::int32_t status = -1;
    HostileTimes times{};
    times.reading = Best(state, [&] {
        const compositions::CompositionScript script(text);
        status = script.GetReadStatus();
    });
    if (status != family.status) state.SkipWithError("read with another status");
    const compositions::CompositionScript script(text);
    times.floor = Quickest([&] { ReadAsFloor(text, script.GetDescription()); });
    const auto found = measured.find({family.name, state.range(0) / 10});
    const HostileTimes smaller = found != measured.end() ? found->second : HostileTimes{};
    const double growth = smaller.reading > 0 ? times.reading / smaller.reading : 0;
    const double floorGrowth = smaller.floor > 0 ? times.floor / smaller.floor : 0;
    state.counters["growth"] = growth;
    state.counters["floor_growth"] = floorGrowth;
    state.counters["growth_over_floor"] = floorGrowth > 0 ? 10 * growth / floorGrowth : 0;
    measured[{family.name, state.range(0)}] = times;
    state.counters["times_floor"] = times.reading / times.floor;
    state.counters["ns_per_byte"] = times.reading * 1e9 / static_cast<double>(text.size());
}

}  // namespace

int main(int argc, char** argv) {
    // Memory that was freed is kept for the next run: large texts would pay for fresh pages in each
    // run, small ones never, and that is no growth of the reader's.
    mallopt(M_MMAP_THRESHOLD, std::numeric_limits<int>::max());
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
            ->MinTime(0.05);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
