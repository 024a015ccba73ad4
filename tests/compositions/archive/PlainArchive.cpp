#include "compositions/archive/PlainArchive.h"

#include <utility>

namespace plain {
namespace {

using namespace compositions;

// A wide text as 16-bit units.
std::vector<unsigned> Units(std::wstring_view text) {
    std::vector<unsigned> units;
    for (const wchar_t character : text) {
        const auto value = static_cast<unsigned long>(character);
        if (sizeof(wchar_t) == 4 && value >= 0x10000) {
            units.push_back(static_cast<unsigned>(0xD800 + (value - 0x10000) / 0x400));
            units.push_back(static_cast<unsigned>(0xDC00 + (value - 0x10000) % 0x400));
        } else {
            units.push_back(static_cast<unsigned>(value));
        }
    }
    return units;
}

std::wstring Characters(const std::vector<unsigned>& units) {
    std::wstring text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const bool pair = sizeof(wchar_t) == 4 && units[i] / 0x400 == 0xD800 / 0x400 &&
                          i + 1 < units.size() && units[i + 1] / 0x400 == 0xDC00 / 0x400;
        if (pair) {
            text += static_cast<wchar_t>(0x10000 + (units[i] - 0xD800) * 0x400 +
                                         (units[i + 1] - 0xDC00));
            ++i;
        } else {
            text += static_cast<wchar_t>(units[i]);
        }
    }
    return text;
}

class Writer {
public:
    explicit Writer(File& file) : file_(file) {}

    void Integer(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            file_.bytes += static_cast<char>(static_cast<unsigned char>(value & 0xFF));
            value >>= 8;
        }
    }
    void U32(std::uint32_t value) { Integer(value, 4); }
    void Count(std::size_t count) {
        file_.counts.push_back(file_.bytes.size());
        Integer(count, 8);
    }
    void Text(std::wstring_view text) {
        const std::vector<unsigned> units = Units(text);
        file_.lengths.push_back(file_.bytes.size());
        Integer(units.size(), 8);
        for (const unsigned unit : units) Integer(unit, 2);
    }
    void Name(const UpperName& name) {
        Text(name.Data() == nullptr ? std::wstring_view() : name.Data());
    }
    void Names(const std::vector<UpperName>& names) {
        Count(names.size());
        for (const UpperName& name : names) Name(name);
    }
    void Node(const StructureNode& node) {
        Name(node.name);
        Count(node.inputs.size());
        for (const StructureNode& child : node.inputs) Node(child);
        Count(node.secondary.size());
        for (const StructureNode& child : node.secondary) Node(child);
    }

private:
    File& file_;
};

struct End {};

class Reader {
public:
    explicit Reader(const std::string& bytes) : bytes_(bytes) {}

    std::uint64_t Integer(int bytes) {
        std::uint64_t value = 0;
        for (int i = 0; i < bytes; ++i) {
            if (position_ == bytes_.size()) throw End();
            const auto byte = static_cast<unsigned char>(bytes_[position_++]);
            value |= static_cast<std::uint64_t>(byte) << (8 * i);
        }
        return value;
    }
    std::uint32_t U32() { return static_cast<std::uint32_t>(Integer(4)); }
    std::wstring Text() {
        std::vector<unsigned> units;
        for (std::uint64_t left = Integer(8); left > 0; --left) {
            units.push_back(static_cast<unsigned>(Integer(2)));
        }
        return Characters(units);
    }
    std::wstring CutText() {
        const std::wstring text = Text();
        return text.c_str();
    }
    UpperName Name() { return UpperName::Verbatim(CutText()); }
    template <class Element>
    void Each(Element element) {
        for (std::uint64_t left = Integer(8); left > 0; --left) element();
    }
    StructureNode Node() {
        StructureNode node(Name());
        Each([&] { node.inputs.push_back(Node()); });
        Each([&] { node.secondary.push_back(Node()); });
        return node;
    }

private:
    const std::string& bytes_;
    std::size_t position_ = 0;
};

void WriteMedia(Writer& out, const MediaSources& sources) {
    out.Count(sources.size());
    for (const auto& [key, source] : sources) {
        out.Name(key);
        out.U32(source.kind);
        out.Count(source.items.size());
        for (const MediaItem& item : source.items) {
            out.U32(item.isRegistryValue ? 1 : 0);
            out.Text(item.text);
        }
    }
}

void WriteEnvelopes(Writer& out, const Envelopes& envelopes) {
    out.Count(envelopes.size());
    for (const auto& [key, envelope] : envelopes) {
        out.Name(key);
        out.Text(envelope.count);
        out.Count(envelope.keys.size());
        for (const EnvelopeKey& point : envelope.keys) {
            out.Text(point.time);
            out.Text(point.value);
            out.Name(point.kind);
            out.Text(point.firstParameter);
            out.Text(point.secondParameter);
        }
    }
}

void WriteTimeline(Writer& out, const CompositionDescription& description) {
    out.Count(description.timelineEntries.size());
    for (const TimelineEntry& entry : description.timelineEntries) {
        out.Name(entry.instance);
        out.Text(entry.property);
        out.Text(entry.value);
        out.U32(entry.kind);
    }
    out.Count(description.timelineEvents.size());
    for (const TimelineEvent& event : description.timelineEvents) {
        out.Name(event.instance);
        out.Text(event.property);
        out.Name(event.envelope);
    }
}

void WriteMappings(Writer& out, const CompositionDescription& description) {
    out.Count(description.mappings.size());
    for (const Mapping& mapping : description.mappings) {
        out.Name(mapping.property);
        out.U32(mapping.access);
        out.Name(mapping.instance);
        out.Text(mapping.targetProperty);
    }
    out.Count(description.properties.size());
    for (const PropertyRecord& property : description.properties) {
        out.U32(property.access);
        out.Text(property.name);
        out.Text(property.value);
    }
}

void WriteSetup(Writer& out, const CompositionDescription& description) {
    out.Text(description.name);
    out.Text(description.category);
    out.Count(description.numberedInputs.size());
    for (const auto& [key, number] : description.numberedInputs) {
        out.Name(key);
        out.U32(static_cast<std::uint32_t>(number));
    }
    out.Count(description.registryValues.size());
    for (const auto& [key, value] : description.registryValues) {
        out.Name(key);
        out.Text(value.first);
        out.Text(value.second);
        out.Text(value.third);
    }
    out.Integer(description.isFilter ? 1 : 0, 1);
    out.U32(static_cast<std::uint32_t>(description.speed));
    out.Integer(description.swap ? 1 : 0, 1);
}

void ReadMedia(Reader& in, MediaSources& sources) {
    in.Each([&] {
        UpperName key = in.Name();
        MediaSource source;
        source.kind = in.U32();
        in.Each([&] {
            MediaItem item;
            item.isRegistryValue = in.U32() != 0;
            item.text = in.Text();
            source.items.push_back(item);
        });
        sources[key] = source;
    });
}

void ReadEnvelopes(Reader& in, Envelopes& envelopes) {
    in.Each([&] {
        UpperName key = in.Name();
        Envelope envelope;
        envelope.count = in.Text();
        in.Each([&] {
            EnvelopeKey point;
            point.time = in.Text();
            point.value = in.Text();
            point.kind = in.Name();
            point.firstParameter = in.Text();
            point.secondParameter = in.Text();
            envelope.keys.push_back(point);
        });
        envelopes[key] = envelope;
    });
}

void ReadTimeline(Reader& in, CompositionDescription& description) {
    in.Each([&] {
        TimelineEntry entry;
        entry.instance = in.Name();
        entry.property = in.Text();
        entry.value = in.Text();
        entry.kind = in.U32();
        description.timelineEntries.push_back(entry);
    });
    in.Each([&] {
        TimelineEvent event;
        event.instance = in.Name();
        event.property = in.Text();
        event.envelope = in.Name();
        description.timelineEvents.push_back(event);
    });
}

void ReadMappings(Reader& in, CompositionDescription& description) {
    in.Each([&] {
        Mapping mapping;
        mapping.property = in.Name();
        mapping.access = in.U32();
        mapping.instance = in.Name();
        mapping.targetProperty = in.Text();
        description.mappings.push_back(mapping);
    });
    in.Each([&] {
        PropertyRecord property;
        property.access = in.U32();
        property.name = in.Text();
        property.value = in.Text();
        description.properties.push_back(property);
    });
}

void ReadSetup(Reader& in, CompositionDescription& description) {
    description.name = in.Text();
    description.category = in.Text();
    in.Each([&] {
        UpperName key = in.Name();
        description.numberedInputs[key] = static_cast<std::int32_t>(in.U32());
    });
    in.Each([&] {
        UpperName key = in.Name();
        RegistryValue value;
        value.first = in.Text();
        value.second = in.Text();
        value.third = in.Text();
        description.registryValues[key] = value;
    });
    description.isFilter = in.Integer(1) != 0;
    description.speed = static_cast<std::int32_t>(in.U32());
    description.swap = in.Integer(1) != 0;
}

void ReadBody(Reader& in, CompositionDescription& description) {
    in.Each([&] { description.inputs.push_back(in.Name()); });
    in.Each([&] {
        UpperName key = in.Name();
        description.effectInstances[key] = in.CutText();
    });
    in.Each([&] { description.mixes.push_back(in.Name()); });
    ReadMedia(in, description.mediaSources);
    ReadMappings(in, description);
    ReadEnvelopes(in, description.envelopes);
    ReadTimeline(in, description);
    description.structure = in.Node();
    ReadSetup(in, description);
}

}  // namespace

File Write(const CompositionDescription& description, std::int32_t version) {
    File file;
    file.bytes.assign("ScriptArchive\0", 14);
    Writer out(file);
    out.U32(static_cast<std::uint32_t>(version));
    out.Names(description.inputs);
    out.Count(description.effectInstances.size());
    for (const auto& [key, effect] : description.effectInstances) {
        out.Name(key);
        out.Text(effect.c_str());
    }
    out.Names(description.mixes);
    WriteMedia(out, description.mediaSources);
    WriteMappings(out, description);
    WriteEnvelopes(out, description.envelopes);
    WriteTimeline(out, description);
    out.Node(description.structure);
    WriteSetup(out, description);
    return file;
}

Reading Read(const std::string& bytes) {
    Reading reading;
    if (bytes.compare(0, 14, std::string("ScriptArchive\0", 14)) != 0) return reading;
    const std::string behind = bytes.substr(14);
    Reader in(behind);
    try {
        reading.version = static_cast<std::int32_t>(in.U32());
        ReadBody(in, reading.description);
        reading.whole = true;
    } catch (const End&) {
    }
    return reading;
}

}  // namespace plain
