#include "helpers/tracer/ModuleTracer.h"

#include <atomic>

#include "platform/Thread.h"

namespace helpers {
namespace {

std::atomic<TracerLayout*> g_tracer{nullptr};
std::atomic<std::uint32_t> g_writers{0};  // threads that may be inside the block

constexpr int kWithdrawRounds = 100;

// Held by a thread that may be inside the block.
struct Inside {
    // seq_cst, as the load of whoever made it; both pair with the two accesses in WithdrawTracer.
    Inside() { g_writers.fetch_add(1, std::memory_order_seq_cst); }
    // release; pairs with the load in WithdrawTracer: the block is unmapped after this.
    ~Inside() { g_writers.fetch_sub(1, std::memory_order_release); }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;
};

}  // namespace

void PublishTracer(TracerLayout& tracer) {
    g_tracer.store(&tracer, std::memory_order_seq_cst);  // pairs with the loads by an Inside
}

void WithdrawTracer() {
    // seq_cst on both; pair with those of an Inside: either the writer sees that the tracer is
    // gone, or this sees the writer.
    g_tracer.store(nullptr, std::memory_order_seq_cst);
    for (int round = 0; round < kWithdrawRounds; ++round) {
        if (g_writers.load(std::memory_order_seq_cst) == 0) return;
        platform::SleepMs(1);
    }
}

void AbandonTracer() {
    // relaxed; a forked child has one thread.
    g_tracer.store(nullptr, std::memory_order_relaxed);
    g_writers.store(0, std::memory_order_relaxed);
}

bool HasTracer() {
    return g_tracer.load(std::memory_order_relaxed) != nullptr;  // relaxed; a hint
}

bool IsTraced(std::uint32_t level) {
    if (!HasTracer()) return false;
    const Inside inside;
    TracerLayout* layout = g_tracer.load(std::memory_order_seq_cst);
    return layout != nullptr && Tracer(*layout).WouldWrite(level);
}

void WriteToTracer(std::uint32_t level, const std::wstring& text) {
    const Inside inside;
    if (TracerLayout* layout = g_tracer.load(std::memory_order_seq_cst)) {
        Tracer(*layout).Write(level, text);
    }
}

}  // namespace helpers
