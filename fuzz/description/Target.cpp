// A description put together from the bytes, saved as an archive, and loaded: it must be the same,
// and the file what the plain writer of archives writes.

#include <string>
#include <utility>

#include "Fuzz.h"
#include "TempFile.h"
#include "compositions/ArchiveWriter.h"
#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"

using namespace compositions;

namespace {

constexpr unsigned kMostElements = 6;
constexpr int kMostLevels = 40;

class Maker {
public:
    Maker(const std::uint8_t* data, std::size_t size) : input_(data, size) {}

    CompositionDescription Make() {
        CompositionDescription d;
        FillLists(d);
        FillMaps(d);
        d.structure = Tree(0);
        d.name = Text();
        d.category = Text();
        d.isFilter = input_.Flag();
        d.speed = static_cast<std::int32_t>(input_.Number());
        d.swap = input_.Flag();
        return d;
    }

private:
    // Any 16-bit unit but surrogates, which only pairs make sense of; zeros among them.
    std::wstring Text() {
        std::wstring text;
        const unsigned form = input_.Byte();
        const bool isWide = form >= 0xC0;
        for (unsigned left = form % 48; left > 0 && !input_.IsEmpty(); --left) {
            const unsigned unit = isWide ? input_.Word() : input_.Byte();
            text += static_cast<wchar_t>(unit >= 0xD800 && unit < 0xE000 ? unit - 0x8000 : unit);
        }
        return text;
    }
    UpperName Name() { return UpperName::Verbatim(Text()); }
    unsigned Count() { return input_.IsEmpty() ? 0 : input_.Below(kMostElements); }

    template <class List, class Element>
    void Fill(List& list, Element element) {
        for (unsigned left = Count(); left > 0; --left) list.push_back(element());
    }
    template <class Map, class Value>
    void FillMap(Map& map, Value value) {
        for (unsigned left = Count(); left > 0; --left) {
            UpperName key = Name();
            map[std::move(key)] = value();
        }
    }
    StructureNode Tree(int level) {
        StructureNode node{Name()};
        if (level == kMostLevels) return node;
        Fill(node.inputs, [&] { return Tree(level + 1); });
        Fill(node.secondary, [&] { return Tree(level + 1); });
        return node;
    }
    EnvelopeKey Key() {
        EnvelopeKey key;
        key.time = Text();
        key.value = Text();
        key.kind = Name();
        key.firstParameter = Text();
        key.secondParameter = Text();
        return key;
    }
    void FillLists(CompositionDescription& d) {
        Fill(d.inputs, [&] { return Name(); });
        Fill(d.mixes, [&] { return Name(); });
        Fill(d.mappings, [&] { return Mapping{Name(), input_.Number(), Name(), Text()}; });
        Fill(d.properties, [&] { return PropertyRecord{input_.Number(), Text(), Text()}; });
        Fill(d.timelineEntries, [&] {
            return TimelineEntry{Name(), Text(), Text(), input_.Number()};
        });
        Fill(d.timelineEvents, [&] { return TimelineEvent{Name(), Text(), Name()}; });
    }
    void FillMaps(CompositionDescription& d) {
        FillMap(d.effectInstances, [&] { return Text(); });
        FillMap(d.mediaSources, [&] {
            MediaSource source{input_.Number(), {}};
            Fill(source.items, [&] { return MediaItem{input_.Flag(), Text()}; });
            return source;
        });
        FillMap(d.envelopes, [&] {
            Envelope envelope{Text(), {}};
            Fill(envelope.keys, [&] { return Key(); });
            return envelope;
        });
        FillMap(d.numberedInputs, [&] { return static_cast<std::int32_t>(input_.Number()); });
        FillMap(d.registryValues, [&] { return RegistryValue{Text(), Text(), Text()}; });
    }

    fuzz::Input input_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::TempFile file("description");
    const CompositionDescription description = Maker(data, size).Make();
    fuzz::Check(WriteArchive(file.Path(), description), "cannot be written");
    fuzz::Check(file.Read() == plain::Write(description).bytes, "the file's bytes");
    ScriptArchive archive(file.Path(), true);
    CompositionDescription loaded;
    fuzz::Check(archive.Version() == ScriptArchive::kWrittenVersion, "the version");
    fuzz::Check(archive.serialize(loaded), "does not load");
    fuzz::Check(plain::Of(loaded) == plain::Of(description), "loads differently");
    return 0;
}
