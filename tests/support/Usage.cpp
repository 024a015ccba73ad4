#include "support/Usage.h"

#include <algorithm>

#include "platform/Thread.h"

namespace test_support {

Usage LeastUsage(int looks, const Usage& enough) {
    Usage least = CountUsage();
    const auto isMore = [&] {
        return least.handles > enough.handles || least.threads > enough.threads ||
               least.mappings > enough.mappings;
    };
    for (int i = 1; i < looks && isMore(); ++i) {
        platform::SleepMs(10);
        const Usage usage = CountUsage();
        least.handles = std::min(least.handles, usage.handles);
        least.threads = std::min(least.threads, usage.threads);
        least.mappings = std::min(least.mappings, usage.mappings);
        least.heapBytes = std::min(least.heapBytes, usage.heapBytes);
    }
    return least;
}

std::string Growth(const Usage& before, const Usage& after) {
    return "handles " + std::to_string(after.handles - before.handles) + " threads " +
           std::to_string(after.threads - before.threads) + " mappings " +
           std::to_string(after.mappings - before.mappings) + " bytes " +
           std::to_string(after.heapBytes - before.heapBytes);
}

}  // namespace test_support
