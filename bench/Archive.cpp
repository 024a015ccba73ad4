// Saving and loading a description in memory, against a deep copy of it and against a straight-line
// encoder of the same values. The cost of the files themselves is printed beside.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>

#include "compositions/ArchiveBody.h"
#include "compositions/ScriptArchive.h"

namespace {

using namespace compositions;
using Clock = std::chrono::steady_clock;

UpperName Name(const std::wstring& text) {
    return UpperName::Verbatim(text);
}

// What a composition of a page of script holds; `scale` pages of it.
CompositionDescription Typical(int scale) {
    CompositionDescription d;
    d.name = L"Glow Transition";
    d.category = L"Transitions";
    for (int page = 0; page < scale; ++page) {
        const std::wstring suffix = std::to_wstring(page);
        d.inputs.push_back(Name(L"SOURCE" + suffix));
        d.mixes.push_back(Name(L"MIX" + suffix));
        d.mediaSources[Name(L"LOGO" + suffix)] = {kBitmap, {{false, L"pictures\\logo.png"}}};
        d.registryValues[Name(L"ART" + suffix)] = {L"Software\\Studio\\Art", L"Folder", L""};
        StructureNode mix{Name(L"MIX" + suffix)};
        for (int i = 0; i < 5; ++i) {
            const std::wstring instance = L"BLUR" + suffix + L"_" + std::to_wstring(i);
            d.effectInstances[Name(instance)] = L"Gaussian Blur";
            d.properties.push_back({9, L"Blur amount " + std::to_wstring(i), L"0.75"});
            d.mappings.push_back({Name(L"BLUR AMOUNT"), 9, Name(instance), L"Radius"});
            d.timelineEntries.push_back({Name(instance), L"SOFTNESS", L"0.25", kNumber});
            d.timelineEvents.push_back({Name(instance), L"OPACITY", Name(L"FADE")});
            mix.inputs.emplace_back(Name(instance)).inputs.emplace_back(Name(L"SOURCE" + suffix));
        }
        Envelope fade{L"3", {}};
        for (const wchar_t* time : {L"0", L"12", L"25"}) {
            fade.keys.push_back({time, L"0.5", Name(L"LINEAR"), L"0.0", L"0.0"});
        }
        d.envelopes[Name(L"FADE" + suffix)] = fade;
        d.structure.inputs.push_back(std::move(mix));
    }
    return d;
}

// The floor of saving: every value appended in order by the plainest code that does it.
class StraightEncoder {
public:
    explicit StraightEncoder(std::string& out) : out_(out) {}

    void Number(std::uint32_t value) { Append(&value, sizeof value); }
    void Count(std::uint64_t value) { Append(&value, sizeof value); }
    void Text(std::wstring_view text) {
        Count(text.size());
        const std::size_t begin = out_.size();
        out_.resize(begin + 2 * text.size());
        char* to = out_.data() + begin;
        for (const wchar_t character : text) {
            const auto unit = static_cast<char16_t>(character);
            std::memcpy(to, &unit, sizeof unit);
            to += sizeof unit;
        }
    }
    void Name(const UpperName& name) { Text(name.View()); }
    void Node(const StructureNode& node) {
        Name(node.name);
        Count(node.inputs.size());
        for (const StructureNode& child : node.inputs) Node(child);
        Count(node.secondary.size());
        for (const StructureNode& child : node.secondary) Node(child);
    }

private:
    void Append(const void* value, std::size_t size) {
        out_.append(static_cast<const char*>(value), size);
    }

    std::string& out_;
};

void EncodeLists(const CompositionDescription& d, StraightEncoder& out) {
    out.Count(d.inputs.size());
    for (const UpperName& name : d.inputs) out.Name(name);
    out.Count(d.effectInstances.size());
    for (const auto& [key, effect] : d.effectInstances) out.Name(key), out.Text(effect);
    out.Count(d.mixes.size());
    for (const UpperName& name : d.mixes) out.Name(name);
    out.Count(d.mediaSources.size());
    for (const auto& [key, source] : d.mediaSources) {
        out.Name(key), out.Number(source.kind), out.Count(source.items.size());
        for (const MediaItem& item : source.items) {
            out.Number(item.isRegistryValue), out.Text(item.text);
        }
    }
    out.Count(d.mappings.size());
    for (const Mapping& m : d.mappings) {
        out.Name(m.property), out.Number(m.access), out.Name(m.instance);
        out.Text(m.targetProperty);
    }
    out.Count(d.properties.size());
    for (const PropertyRecord& p : d.properties) {
        out.Number(p.access), out.Text(p.name), out.Text(p.value);
    }
}

void EncodeTimes(const CompositionDescription& d, StraightEncoder& out) {
    out.Count(d.envelopes.size());
    for (const auto& [key, envelope] : d.envelopes) {
        out.Name(key), out.Text(envelope.count), out.Count(envelope.keys.size());
        for (const EnvelopeKey& k : envelope.keys) {
            out.Text(k.time), out.Text(k.value), out.Name(k.kind);
            out.Text(k.firstParameter), out.Text(k.secondParameter);
        }
    }
    out.Count(d.timelineEntries.size());
    for (const TimelineEntry& e : d.timelineEntries) {
        out.Name(e.instance), out.Text(e.property), out.Text(e.value), out.Number(e.kind);
    }
    out.Count(d.timelineEvents.size());
    for (const TimelineEvent& e : d.timelineEvents) {
        out.Name(e.instance), out.Text(e.property), out.Name(e.envelope);
    }
}

void Encode(const CompositionDescription& d, std::string& bytes) {
    StraightEncoder out(bytes);
    EncodeLists(d, out);
    EncodeTimes(d, out);
    out.Node(d.structure);
    out.Text(d.name), out.Text(d.category);
    out.Count(d.numberedInputs.size());
    for (const auto& [key, number] : d.numberedInputs) {
        out.Name(key), out.Number(static_cast<std::uint32_t>(number));
    }
    out.Count(d.registryValues.size());
    for (const auto& [key, value] : d.registryValues) {
        out.Name(key), out.Text(value.first), out.Text(value.second), out.Text(value.third);
    }
    bytes.push_back(d.isFilter);
    out.Number(static_cast<std::uint32_t>(d.speed));
    bytes.push_back(d.swap);
}

template <class Work>
double Seconds(Work work) {
    const auto begin = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

// Times both in turns, so that what the machine does besides falls on both.
template <class Work, class Floor>
void RunAgainst(benchmark::State& state, Work work, Floor floor) {
    double worked = 0;
    double floored = 0;
    for (auto _ : state) {
        const double seconds = Seconds(work);
        worked += seconds;
        floored += Seconds(floor);
        state.SetIterationTime(seconds);
    }
    state.counters["ratio"] = worked / floored;
}

void BM_LoadAgainstDeepCopy(benchmark::State& state) {
    const CompositionDescription original = Typical(static_cast<int>(state.range(0)));
    std::string bytes;
    SaveArchiveBody(original, bytes);
    RunAgainst(
        state,
        [&] {
            CompositionDescription loaded;
            LoadArchiveBody(bytes, loaded);
            benchmark::DoNotOptimize(loaded);
        },
        [&] {
            CompositionDescription copy(original);
            benchmark::DoNotOptimize(copy);
        });
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

void BM_SaveAgainstStraightEncoder(benchmark::State& state) {
    const CompositionDescription original = Typical(static_cast<int>(state.range(0)));
    std::string saved;
    std::string straight;
    SaveArchiveBody(original, saved);
    Encode(original, straight);
    if (saved != straight) state.SkipWithError("the floor writes other bytes");
    RunAgainst(
        state,
        [&] {
            std::string bytes;
            SaveArchiveBody(original, bytes);
            benchmark::DoNotOptimize(bytes.data());
        },
        [&] {
            std::string bytes;
            Encode(original, bytes);
            benchmark::DoNotOptimize(bytes.data());
        });
}

std::wstring ScratchPath() {
    const auto path = std::filesystem::temp_directory_path() / "tarnex_bench.mxf";
    const std::string text = path.string();
    return {text.begin(), text.end()};
}

void BM_FileSave(benchmark::State& state) {
    const CompositionDescription original = Typical(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        ScriptArchive archive(ScratchPath(), false);
        benchmark::DoNotOptimize(archive.serialize(original) && archive.Close());
    }
}

void BM_FileLoad(benchmark::State& state) {
    const CompositionDescription original = Typical(static_cast<int>(state.range(0)));
    {
        ScriptArchive archive(ScratchPath(), false);
        if (!archive.serialize(original)) state.SkipWithError("the archive cannot be written");
    }
    for (auto _ : state) {
        CompositionDescription loaded;
        ScriptArchive archive(ScratchPath(), true);
        benchmark::DoNotOptimize(archive.serialize(loaded));
    }
    std::filesystem::remove(ScratchPath());
}

BENCHMARK(BM_LoadAgainstDeepCopy)->Arg(1)->Arg(100)->UseManualTime();
BENCHMARK(BM_SaveAgainstStraightEncoder)->Arg(1)->Arg(100)->UseManualTime();
BENCHMARK(BM_FileSave)->Arg(1)->Arg(100);
BENCHMARK(BM_FileLoad)->Arg(1)->Arg(100);

}  // namespace

BENCHMARK_MAIN();
