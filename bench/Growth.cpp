// Counts the instructions that reading each hostile text takes, from 1 KB to 10 MB: what grows
// beside them in time is the machine's memory. For `./dev bench growth`, which runs it under
// callgrind and makes a table of the counts.

#include <valgrind/callgrind.h>

#include <cstdio>
#include <string>

#include "HostileScripts.h"
#include "ReaderScripts.h"
#include "compositions/CompScript.h"

namespace {

constexpr std::size_t kSmallest = 1'000;
constexpr std::size_t kLargest = 10'000'000;

// The counts go into a dump of that name.
bool CountReading(const std::string& text, std::int32_t status, const std::string& name) {
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    bool isRead;
    {
        const compositions::CompositionScript script(text);
        isRead = script.GetReadStatus() == status;
    }
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    return isRead;
}

}  // namespace

int main() {
    if (!RUNNING_ON_VALGRIND) {
        std::puts("Nothing is counted without callgrind; run ./dev bench growth");
        return 0;
    }
    // What the first reading of a process makes is not the text's.
    compositions::CompositionScript(bench::TypicalScript());
    for (const bench::Family& family : bench::HostileFamilies()) {
        for (std::size_t bytes = kSmallest; bytes <= kLargest; bytes *= 10) {
            const std::string name = family.name + "|" + std::to_string(bytes);
            if (!CountReading(family.make(bytes), family.status, name)) {
                std::printf("%s: read with another status\n", name.c_str());
                return 1;
            }
        }
    }
    return 0;
}
