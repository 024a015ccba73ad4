// The script toolkit on hostile texts from 1 KB to 10 MB: a search for every header, which finds
// none, and a search for a rule that comes to itself. Printed are the growth per tenfold size,
// which stays near 10, and the time against a plain tokenising pass over the same text.

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <time.h>

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Tokenising.h"
#include "compositions/language/CompInterpreter.h"

namespace {

using compositions::CompInterpreter;

struct Family {
    const char* name;
    std::string before;
    std::string part;  // again and again up to the size
    std::string after;

    std::string Make(std::size_t size) const {
        std::string text = before;
        while (text.size() + after.size() < size) text += part;
        return text + after;
    }
};

const std::vector<Family>& Families() {
    static const std::vector<Family> families = {
        {"blanks", "", " ", ""},
        {"open_brackets", "", "[", ""},
        {"brackets_before_a_name", "", "[", "name] "},
        {"minuses", "", "-", ""},
        {"names", "", "name ", ""},
        {"one_long_name", "", "n", ""},
        {"an_open_string", "\"", "text ", ""},
        {"quotes", "", "\"", ""},
        {"parentheses", "", "(", ""},
        {"comments", "", ";note\n", ""},
        {"one_comment", ";", "note", ""},
        {"other_headers", "", "[ SETUPS ] ", ""},
        {"targets", "", "a.\"x\",", ""},
        {"keys", "e={1},", "{1,2,a},", ""},
        {"path_parts", "m=MOVIE:", "%a%+", ""},
        {"zeros", "", std::string(1, '\0'), ""},
    };
    return families;
}

double Now() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <typename Work>
double Seconds(Work&& work) {
    const double start = Now();
    work();
    return Now() - start;
}

void FindHeaders(const std::string& text) {
    using namespace compositions;
    CompInterpreter interpreter(text);
    for (const Rule header : {R26, R29, R32, R36, R38, R42, R47, R53}) {
        interpreter.SetPosition(0);
        benchmark::DoNotOptimize(interpreter.find_expression(header, false));
    }
}

void MatchStatements(const std::string& text) {
    using namespace compositions;
    CompInterpreter interpreter(text);
    helpers::scripting::Pieces pieces;
    for (const Rule rule : {R16, R28, R30, R34, R35, R37, R46, R52, R54}) {
        interpreter.SetPosition(0);
        benchmark::DoNotOptimize(interpreter.get_expression(rule, pieces));
    }
}

void FindTargets(const std::string& text) {
    CompInterpreter interpreter(text);
    benchmark::DoNotOptimize(interpreter.find_expression(compositions::R46, false));
}

using Work = void (*)(const std::string&);

void Run(benchmark::State& state, const Family& family, const char* name, Work work) {
    static std::map<std::string, double> times;
    const std::string text = family.Make(static_cast<std::size_t>(state.range(0)));
    std::vector<bench::Token> tokens;
    double best = std::numeric_limits<double>::max();
    double floor = best;
    for (auto _ : state) {
        const double seconds = Seconds([&] { work(text); });
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        floor = std::min(floor, Seconds([&] { bench::Tokenise(text, tokens); }));
    }
    const std::string key = std::string(name) + family.name;
    const auto smaller = times.find(key + std::to_string(state.range(0) / 10));
    state.counters["growth"] = smaller == times.end() ? 0 : best / smaller->second;
    state.counters["times_floor"] = best / floor;
    times[key + std::to_string(state.range(0))] = best;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::pair<const char*, Work>> works = {
        {"headers", FindHeaders}, {"statements", MatchStatements}, {"search", FindTargets}};
    for (const auto& [name, work] : works) {
        for (const Family& family : Families()) {
            const std::string title = std::string(name) + "/" + family.name;
            benchmark::RegisterBenchmark(
                title.c_str(), [&family, name = name, work = work](
                                   benchmark::State& state) { Run(state, family, name, work); })
                ->RangeMultiplier(10)
                ->Range(1000, 10'000'000)
                ->MinTime(0.02)
                ->UseManualTime();
        }
    }
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
