#include "compositions/archive/SampleDescriptions.h"

#include <random>
#include <utility>

namespace samples {
namespace {

using namespace compositions;

UpperName Name(std::wstring_view characters) {
    return UpperName::Verbatim(characters);
}

StructureNode Node(std::wstring_view name, std::vector<StructureNode> inputs = {},
                   std::vector<StructureNode> secondary = {}) {
    StructureNode node{Name(name)};
    node.inputs = std::move(inputs);
    node.secondary = std::move(secondary);
    return node;
}

class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

    wchar_t Character() {
        switch (Below(8)) {
            case 0:
                return static_cast<wchar_t>(0xFF80 + Below(0x80));
            case 1:
                return static_cast<wchar_t>(1 + Below(0xD7FF));
            default:
                return static_cast<wchar_t>(L'A' + Below(58));
        }
    }
    std::wstring Text() {
        std::wstring text(Below(4) == 0 ? Below(40) : Below(8), L'\0');
        for (wchar_t& character : text) {
            if (Below(10) != 0) character = Character();
        }
        return text;
    }
    UpperName Name() { return UpperName::Verbatim(Text()); }
    std::uint32_t Number() {
        return Below(3) == 0 ? static_cast<std::uint32_t>(random_()) : Below(3);
    }

    template <class List, class Element>
    void Fill(List& list, Element element) {
        for (unsigned left = Below(5); left > 0; --left) list.push_back(element());
    }
    template <class Map, class Value>
    void FillMap(Map& map, Value value) {
        for (unsigned left = Below(5); left > 0; --left) map[Name()] = value();
    }
    StructureNode Tree(unsigned depth) {
        StructureNode node{Name()};
        if (depth == 0) return node;
        for (unsigned left = Below(3); left > 0; --left) node.inputs.push_back(Tree(depth - 1));
        for (unsigned left = Below(2); left > 0; --left) node.secondary.push_back(Tree(depth - 1));
        return node;
    }

private:
    std::mt19937 random_;
};

}  // namespace

CompositionDescription Everything() {
    CompositionDescription d;
    d.inputs = {Name(L"FIRST"), Name(L"FIRST"), Name(L"lower"), UpperName(),
                Name(L"AN_INPUT_OF_MORE_THAN_THIRTY_CHARACTERS")};
    d.effectInstances = {{Name(L"BLUR1"), L"An effect that nobody calls by its whole name"},
                         {Name(L"GLOW"), L""}};
    d.mixes = {Name(L"MIX0"), Name(L"mix1")};
    d.mediaSources = {{Name(L"LOGO"), {kBitmap, {{false, L"logo.png"}, {true, L"Art"}}}},
                      {Name(L"CLIP"), {kMovie, {}}}};
    d.mappings = {{Name(L"AMOUNT"), 9, Name(L"BLUR1"), L"Radius"},
                  {Name(L"AMOUNT"), 1, Name(L"GLOW"), L"Size"}};
    d.properties = {{3, L"Amount", L"0.5"}, {0x80000000, L"Title", L"\"x\""}};
    EnvelopeKey first{L"0", L"0", Name(L"LINEAR"), L"0.0", L"0.0"};
    EnvelopeKey second{L"25", L"1.0", Name(L"HERMITE"), L"0.25", L"-1.0000000000000000"};
    d.envelopes = {{Name(L"FADE"), {L"2", {first, second}}}, {Name(L"NONE"), {L"0", {}}}};
    d.timelineEntries = {{Name(L"BLUR1"), L"RADIUS", L"12", kNumber},
                         {Name(L"GLOW"), L"TEXT", L"\xFFE9 \x4E2D", kString}};
    d.timelineEvents = {{Name(L"BLUR1"), L"RADIUS", Name(L"FADE")},
                        {Name(L"GLOW"), L"SIZE", Name(L"NONE")}};
    d.structure = Node(L"MIX0", {Node(L"BLUR1", {Node(L"FIRST")}), Node(L"LOGO")},
                       {Node(L"GLOW", {}, {Node(L"CLIP")})});
    d.name = L"Every Thing";
    d.category = std::wstring(L"Te\0sts", 6);
    d.numberedInputs = {{Name(L"IN1"), 1}, {Name(L"IN2"), -2}};
    d.registryValues = {{Name(L"ART"), {L"Software\\A publisher of some name\\Art", L"Path", L""}},
                        {Name(L"LIB"), {L"a", L"b", L"c"}}};
    d.isFilter = true;
    d.speed = -7;
    d.swap = true;
    return d;
}

CompositionDescription Small() {
    CompositionDescription d;
    d.inputs = {Name(L"A")};
    d.effectInstances = {{Name(L"B"), L"b"}};
    d.mixes = {Name(L"M")};
    d.mediaSources = {{Name(L"S"), {kBitmap, {{true, L"s"}}}}};
    d.mappings = {{Name(L"P"), 1, Name(L"B"), L"q"}};
    d.properties = {{1, L"p", L"1"}};
    d.envelopes = {{Name(L"E"), {L"1", {{L"0", L"1", Name(L"HOLD"), L"0", L"0"}}}}};
    d.timelineEntries = {{Name(L"B"), L"Q", L"1", kNumber}};
    d.timelineEvents = {{Name(L"B"), L"R", Name(L"E")}};
    d.structure = Node(L"M", {Node(L"A")}, {Node(L"B")});
    d.name = L"N";
    d.category = L"C";
    d.numberedInputs = {{Name(L"I"), 1}};
    d.registryValues = {{Name(L"R"), {L"x", L"y", L"z"}}};
    return d;
}

CompositionDescription Documented() {
    CompositionDescription d;
    d.inputs = {Name(L"IN")};
    d.effectInstances = {{Name(L"BLUR1"), L"Blur"}};
    d.mixes = {Name(L"MIX0")};
    d.mediaSources = {{Name(L"LOGO"), {kBitmap, {{true, L"ART"}}}}};
    d.mappings = {{Name(L"SIZE"), 9, Name(L"BLUR1"), L"Radius"}};
    d.properties = {{11, L"Size", L"0.5"}};
    d.envelopes = {{Name(L"FADE"), {L"1", {{L"0", L"1.0", Name(L"HOLD"), L"0.0", L"0.0"}}}}};
    d.timelineEntries = {{Name(L"BLUR1"), L"SOFT", L"2", kNumber}};
    d.timelineEvents = {{Name(L"BLUR1"), L"GAIN", Name(L"FADE")}};
    d.structure = Node(L"MIX0", {Node(L"BLUR1", {Node(L"IN")}), Node(L"LOGO")});
    d.name = L"Soft Logo";
    d.category = L"Titles";
    d.numberedInputs = {{Name(L"BACK"), 3}};
    d.registryValues = {{Name(L"ART"), {L"Studio", L"Art", L""}}};
    d.speed = -2;
    d.swap = true;
    return d;
}

CompositionDescription Generated(unsigned seed) {
    Generator any(seed);
    CompositionDescription d;
    const auto name = [&any] { return any.Name(); };
    any.Fill(d.inputs, name);
    any.FillMap(d.effectInstances, [&any] { return std::wstring(any.Text().c_str()); });
    any.Fill(d.mixes, name);
    any.FillMap(d.mediaSources, [&any] {
        MediaSource source{any.Number(), {}};
        any.Fill(source.items, [&any] { return MediaItem{any.Below(2) == 1, any.Text()}; });
        return source;
    });
    any.Fill(d.mappings, [&any] {
        return Mapping{any.Name(), any.Number(), any.Name(), any.Text()};
    });
    any.Fill(d.properties, [&any] { return PropertyRecord{any.Number(), any.Text(), any.Text()}; });
    any.FillMap(d.envelopes, [&any] {
        Envelope envelope{any.Text(), {}};
        any.Fill(envelope.keys, [&any] {
            return EnvelopeKey{any.Text(), any.Text(), any.Name(), any.Text(), any.Text()};
        });
        return envelope;
    });
    any.Fill(d.timelineEntries, [&any] {
        return TimelineEntry{any.Name(), any.Text(), any.Text(), any.Number()};
    });
    any.Fill(d.timelineEvents, [&any] {
        return TimelineEvent{any.Name(), any.Text(), any.Name()};
    });
    d.structure = any.Tree(4);
    d.name = any.Text();
    d.category = any.Text();
    any.FillMap(d.numberedInputs, [&any] { return static_cast<std::int32_t>(any.Number()); });
    any.FillMap(d.registryValues, [&any] {
        return RegistryValue{any.Text(), any.Text(), any.Text()};
    });
    d.isFilter = any.Below(2) == 1;
    d.speed = static_cast<std::int32_t>(any.Number());
    d.swap = any.Below(2) == 1;
    return d;
}

StructureNode Chain(std::size_t levels) {
    StructureNode root{UpperName::Verbatim(L"R")};
    StructureNode* deepest = &root;
    for (std::size_t i = 1; i < levels; ++i) {
        auto& list = i % 2 == 0 ? deepest->inputs : deepest->secondary;
        deepest = &list.emplace_back();
    }
    return root;
}

}  // namespace samples
