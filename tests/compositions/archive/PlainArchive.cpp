#include "compositions/archive/PlainArchive.h"

namespace plain {
namespace {

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
    void Units(const Text& text) {
        file_.lengths.push_back(file_.bytes.size());
        Integer(text.size(), 8);
        for (const char16_t unit : text) Integer(unit, 2);
    }
    void Names(const std::vector<Text>& names) {
        Count(names.size());
        for (const Text& name : names) Units(name);
    }
    void Tree(const Node& node) {
        Units(node.name);
        Count(node.first.size());
        for (const Node& child : node.first) Tree(child);
        Count(node.second.size());
        for (const Node& child : node.second) Tree(child);
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
    Text Units() {
        Text text;
        for (std::uint64_t left = Integer(8); left > 0; --left) {
            text += static_cast<char16_t>(Integer(2));
        }
        return text;
    }
    Text Name() { return Text(Units().c_str()); }
    template <class Element>
    void Each(Element element) {
        for (std::uint64_t left = Integer(8); left > 0; --left) element();
    }
    Node Tree() {
        Node node{Name(), {}, {}};
        Each([&] { node.first.push_back(Tree()); });
        Each([&] { node.second.push_back(Tree()); });
        return node;
    }

private:
    const std::string& bytes_;
    std::size_t position_ = 0;
};

void WriteMedia(Writer& out, const Description& description) {
    out.Count(description.media.size());
    for (const auto& [key, source] : description.media) {
        out.Units(key);
        out.U32(source.kind);
        out.Count(source.items.size());
        for (const MediaItem& item : source.items) {
            out.U32(item.isRegistryValue);
            out.Units(item.text);
        }
    }
}

void WriteEnvelopes(Writer& out, const Description& description) {
    out.Count(description.envelopes.size());
    for (const auto& [key, envelope] : description.envelopes) {
        out.Units(key);
        out.Units(envelope.number);
        out.Count(envelope.points.size());
        for (const KeyPoint& point : envelope.points) {
            out.Units(point.time);
            out.Units(point.value);
            out.Units(point.kind);
            out.Units(point.first);
            out.Units(point.second);
        }
    }
}

void WriteTimeline(Writer& out, const Description& description) {
    out.Count(description.entries.size());
    for (const Entry& entry : description.entries) {
        out.Units(entry.instance);
        out.Units(entry.property);
        out.Units(entry.value);
        out.U32(entry.kind);
    }
    out.Count(description.events.size());
    for (const Event& event : description.events) {
        out.Units(event.instance);
        out.Units(event.property);
        out.Units(event.envelope);
    }
}

void WriteMappings(Writer& out, const Description& description) {
    out.Count(description.mappings.size());
    for (const Mapping& mapping : description.mappings) {
        out.Units(mapping.property);
        out.U32(mapping.access);
        out.Units(mapping.instance);
        out.Units(mapping.target);
    }
    out.Count(description.properties.size());
    for (const Property& property : description.properties) {
        out.U32(property.access);
        out.Units(property.name);
        out.Units(property.value);
    }
}

void WriteSetup(Writer& out, const Description& description) {
    out.Units(description.name);
    out.Units(description.category);
    out.Count(description.numberedInputs.size());
    for (const auto& [key, number] : description.numberedInputs) {
        out.Units(key);
        out.U32(number);
    }
    out.Count(description.registryValues.size());
    for (const auto& [key, value] : description.registryValues) {
        out.Units(key);
        out.Units(value.first);
        out.Units(value.second);
        out.Units(value.third);
    }
    out.Integer(description.isFilter ? 1 : 0, 1);
    out.U32(description.speed);
    out.Integer(description.swap ? 1 : 0, 1);
}

void ReadMedia(Reader& in, Description& description) {
    in.Each([&] {
        const Text key = in.Name();
        MediaSource source{in.U32(), {}};
        in.Each([&] {
            const std::uint32_t flag = in.U32();
            source.items.push_back({flag != 0 ? 1u : 0u, in.Units()});
        });
        description.media[key] = source;
    });
}

void ReadEnvelopes(Reader& in, Description& description) {
    in.Each([&] {
        const Text key = in.Name();
        Envelope envelope{in.Units(), {}};
        in.Each([&] {
            KeyPoint point;
            point.time = in.Units();
            point.value = in.Units();
            point.kind = in.Name();
            point.first = in.Units();
            point.second = in.Units();
            envelope.points.push_back(point);
        });
        description.envelopes[key] = envelope;
    });
}

void ReadTimeline(Reader& in, Description& description) {
    in.Each([&] {
        Entry entry;
        entry.instance = in.Name();
        entry.property = in.Units();
        entry.value = in.Units();
        entry.kind = in.U32();
        description.entries.push_back(entry);
    });
    in.Each([&] {
        Event event;
        event.instance = in.Name();
        event.property = in.Units();
        event.envelope = in.Name();
        description.events.push_back(event);
    });
}

void ReadMappings(Reader& in, Description& description) {
    in.Each([&] {
        Mapping mapping;
        mapping.property = in.Name();
        mapping.access = in.U32();
        mapping.instance = in.Name();
        mapping.target = in.Units();
        description.mappings.push_back(mapping);
    });
    in.Each([&] {
        Property property;
        property.access = in.U32();
        property.name = in.Units();
        property.value = in.Units();
        description.properties.push_back(property);
    });
}

void ReadSetup(Reader& in, Description& description) {
    description.name = in.Units();
    description.category = in.Units();
    in.Each([&] {
        const Text key = in.Name();
        description.numberedInputs[key] = in.U32();
    });
    in.Each([&] {
        const Text key = in.Name();
        RegistryValue value;
        value.first = in.Units();
        value.second = in.Units();
        value.third = in.Units();
        description.registryValues[key] = value;
    });
    description.isFilter = in.Integer(1) != 0;
    description.speed = in.U32();
    description.swap = in.Integer(1) != 0;
}

void ReadBody(Reader& in, Description& description) {
    in.Each([&] { description.inputs.push_back(in.Name()); });
    in.Each([&] {
        const Text key = in.Name();
        description.effects[key] = in.Name();
    });
    in.Each([&] { description.mixes.push_back(in.Name()); });
    ReadMedia(in, description);
    ReadMappings(in, description);
    ReadEnvelopes(in, description);
    ReadTimeline(in, description);
    description.structure = in.Tree();
    ReadSetup(in, description);
}

}  // namespace

File Write(const Description& description, std::int32_t version) {
    File file;
    file.bytes.assign("ScriptArchive\0", 14);
    Writer out(file);
    out.U32(static_cast<std::uint32_t>(version));
    out.Names(description.inputs);
    out.Count(description.effects.size());
    for (const auto& [key, effect] : description.effects) {
        out.Units(key);
        out.Units(effect);
    }
    out.Names(description.mixes);
    WriteMedia(out, description);
    WriteMappings(out, description);
    WriteEnvelopes(out, description);
    WriteTimeline(out, description);
    out.Tree(description.structure);
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
