// Scripts that several threads read at once, and one description that they share.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "compositions/HashIndex.h"
#include "compositions/reader/ReadScript.h"

namespace {

using namespace compositions;

constexpr std::size_t kThreads = 8;

// Runs `body` with the number of its thread on all of them, let go at one moment.
template <class Body>
void OnThreadsAtOnce(Body body) {
    std::atomic<std::size_t> ready{0};
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&ready, &body, i] {
            for (++ready; ready < kThreads;) std::this_thread::yield();
            body(i);
        });
    }
    for (std::thread& thread : threads) thread.join();
}

// Everything that the description answers.
CompositionDescription Look(const ICompositionReader& reader) {
    CompositionDescription seen;
    seen.inputs = reader.GetInputs();
    seen.effectInstances = reader.GetEffectInstances();
    seen.mixes = reader.GetMixes();
    seen.mediaSources = reader.GetMediaSources();
    seen.mappings = reader.GetMappings();
    seen.properties = reader.GetProperties();
    seen.envelopes = reader.GetEnvelopes();
    seen.timelineEntries = reader.GetTimelineEntries();
    seen.timelineEvents = reader.GetTimelineEvents();
    seen.structure = reader.GetStructure();
    seen.name = reader.GetName();
    seen.category = reader.GetCategory();
    seen.numberedInputs = reader.GetNumberedInputs();
    seen.registryValues = reader.GetRegistryValues();
    seen.isFilter = reader.IsFilter();
    seen.speed = reader.GetSpeed();
    seen.swap = reader.GetSwap();
    return seen;
}

std::string ExampleText(const char* name) {
    return FileText(std::string(TARNEX_SOURCE_DIR) + "/examples/compositions/" + name);
}

// What a process makes at its first reading is made by one of them. These two are run by
// themselves, too, where nothing was read before.
TEST(ReaderThreads, ManyThreadsHashTheFirstNames) {
    std::vector<std::uint64_t> hashes(kThreads);
    OnThreadsAtOnce([&](std::size_t i) { hashes[i] = HashOf(L"a name"); });
    EXPECT_EQ(hashes, std::vector(kThreads, hashes[0]));
}

TEST(ReaderThreads, ManyThreadsReadTheFirstScripts) {
    const std::string text = ExampleText("film_look.txt");
    std::vector<std::shared_ptr<CompositionScript>> scripts(kThreads);
    OnThreadsAtOnce([&](std::size_t i) { scripts[i] = ReadScript(text); });
    const CompositionDescription first = Look(*scripts[0]);
    EXPECT_NE(first.name, L"");
    for (const auto& script : scripts) {
        EXPECT_EQ(script->GetReadStatus(), 0);
        EXPECT_TRUE(Look(*script) == first);
    }
}

TEST(Reader, ManyThreadsReadOneDescription) {
    for (const char* name : {"film_look.txt", "elastic_wipe.txt", "title_roll.txt"}) {
        SCOPED_TRACE(name);
        const std::shared_ptr<CompositionScript> script = ReadScript(ExampleText(name));
        const std::shared_ptr<CompositionScript> other = ReadScript(ExampleText(name));
        const CompositionDescription expected = Look(*other);
        std::atomic<int> wrong{0};
        OnThreadsAtOnce([&](std::size_t) {
            for (int round = 0; round < 20; ++round) {
                if (script->GetReadStatus() != 0 || !(Look(*script) == expected)) ++wrong;
            }
        });
        EXPECT_EQ(wrong, 0);
    }
}

}  // namespace
