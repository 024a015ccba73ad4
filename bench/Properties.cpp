// Property access through the effect's interface, as a ratio to one uncontended std::mutex lock and
// unlock that is measured in the same run, right beside it.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "sdk/EffectBase.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kBatch = 512;

std::wstring NameOf(int index) {
    return L"Property" + std::to_wstring(index);
}

class SixteenProperties : public fx::EffectBase {
public:
    SixteenProperties() : EffectBase(L"Bench", 0x84, 1) {
        for (int i = 0; i < 16; ++i) Bind(NameOf(i), values_[static_cast<std::size_t>(i)]);
    }

private:
    std::array<float, 16> values_{};
};

// Time of kBatch calls of `body`, in seconds.
template <class Body>
double Timed(Body body) {
    const auto start = Clock::now();
    for (int i = 0; i < kBatch; ++i) body(i);
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Alternates short batches of the floor and of `body` and compares their medians, which a batch
// that lost the processor does not move.
template <class Body>
void AgainstMutex(benchmark::State& state, Body body) {
    std::mutex mutex;
    std::vector<double> floors;
    std::vector<double> calls;
    for (auto _ : state) {
        floors.push_back(Timed([&](int) {
            mutex.lock();
            benchmark::ClobberMemory();
            mutex.unlock();
        }));
        calls.push_back(Timed(body));
        state.SetIterationTime(calls.back());
    }
    const double floor = Median(floors) / kBatch;
    const double call = Median(calls) / kBatch;
    state.counters["call_ns"] = call * 1e9;
    state.counters["floor_ns"] = floor * 1e9;
    state.counters["ratio"] = call / floor;
}

void RepeatedGet(benchmark::State& state) {
    SixteenProperties object;
    fx::IBaseFX* effect = &object;
    benchmark::DoNotOptimize(effect);
    const std::wstring name = NameOf(7);
    float value = 0;
    AgainstMutex(state, [&](int) { benchmark::DoNotOptimize(effect->GetProperty(name, value)); });
}

void RepeatedSet(benchmark::State& state) {
    SixteenProperties object;
    fx::IBaseFX* effect = &object;
    benchmark::DoNotOptimize(effect);
    const std::wstring name = NameOf(7);
    AgainstMutex(state, [&](int i) {
        benchmark::DoNotOptimize(effect->SetProperty(name, static_cast<float>(i)));
    });
}

void RandomGetAmong16(benchmark::State& state) {
    SixteenProperties object;
    fx::IBaseFX* effect = &object;
    benchmark::DoNotOptimize(effect);
    std::mt19937 random(1);
    std::vector<std::wstring> names;
    for (int i = 0; i < kBatch; ++i) names.push_back(NameOf(static_cast<int>(random() % 16)));
    float value = 0;
    AgainstMutex(state, [&](int i) {
        benchmark::DoNotOptimize(effect->GetProperty(names[static_cast<std::size_t>(i)], value));
    });
}

BENCHMARK(RepeatedGet)->UseManualTime()->Iterations(5000);
BENCHMARK(RepeatedSet)->UseManualTime()->Iterations(5000);
BENCHMARK(RandomGetAmong16)->UseManualTime()->Iterations(5000);

}  // namespace

int main(int argc, char** argv) {
    // Hosts have several threads. In a process of one thread the C library leaves the atomic
    // instructions of its mutex out, and the floor would be another one.
    std::mutex gate;
    gate.lock();
    std::thread idle([&] { std::lock_guard wait(gate); });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    gate.unlock();
    idle.join();
}
