// One trace call of 64 characters, as a ratio to what no log can do without: reading the clock,
// building the message's string and copying it. Both are measured call by call in the same run.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "helpers/tracer/ModuleTracer.h"
#include "helpers/tracer/service/LogWriter.h"
#include "platform/Thread.h"
#include "sdk/TraceMessage.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBatch = 16;    // calls per reading of the clock, which costs as much as one
constexpr int kBatches = 40;  // per iteration; what they write fits into one buffer
constexpr std::wstring_view kText =
    L"0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef";
static_assert(kText.size() == 64);

// Takes the bytes and forgets them.
class NoLog : public helpers::LogSink {
public:
    bool WriteAt(std::uint64_t, const char*, std::size_t) override { return true; }
};

template <class Body>
void Measure(std::vector<double>& nanoseconds, Body body) {
    for (int batch = 0; batch < kBatches; ++batch) {
        const auto start = Clock::now();
        for (int i = 0; i < kBatch; ++i) body();
        const std::chrono::duration<double, std::nano> time = Clock::now() - start;
        nanoseconds.push_back(time.count() / kBatch);
    }
}

double Percentile(std::vector<double>& values, double share) {
    const auto place = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<std::size_t>(place)];
}

void TraceCall(benchmark::State& state) {
    const auto layout = std::make_unique<helpers::TracerLayout>();
    helpers::Tracer tracer(*layout);
    tracer.InitializeBuffers();
    tracer.SetLevelMask(2);
    tracer.SetRunning(true);
    NoLog sink;
    const auto writer = std::make_unique<helpers::LogWriter>(tracer, sink);
    helpers::PublishTracer(*layout);
    std::vector<wchar_t> area(1 << 16);
    std::size_t place = 0;
    std::vector<double> floors;
    std::vector<double> calls;
    for (auto _ : state) {
        Measure(floors, [&] {
            benchmark::DoNotOptimize(platform::CounterTime());
            std::wstring text(kText);
            text += L'\n';
            benchmark::DoNotOptimize(text);
            std::memcpy(&area[place], text.data(), text.size() * sizeof(wchar_t));
            place = (place + 128) % (area.size() - 128);
            benchmark::ClobberMemory();
        });
        Measure(calls, [] { helpers::TraceMessage().Append(kText); });
        writer->Finish();  // outside both measurements
    }
    helpers::WithdrawTracer();
    const double floor = Percentile(floors, 0.5);
    state.counters["floor_p50_ns"] = floor;
    state.counters["p50_ns"] = Percentile(calls, 0.5);
    state.counters["p99_ns"] = Percentile(calls, 0.99);
    state.counters["p99.9_ns"] = Percentile(calls, 0.999);
    state.counters["floor_p99_ns"] = Percentile(floors, 0.99);
    state.counters["floor_p99.9_ns"] = Percentile(floors, 0.999);
    state.counters["ratio"] = Percentile(calls, 0.5) / floor;
}

BENCHMARK(TraceCall)->Iterations(5000);

}  // namespace

int main(int argc, char** argv) {
    // Hosts have several threads; in a process of one the C library leaves atomic instructions out.
    std::thread([] {}).join();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
