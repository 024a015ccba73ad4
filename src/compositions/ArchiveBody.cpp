#include "compositions/ArchiveBody.h"

#include <type_traits>
#include <utility>
#include <vector>

#include "compositions/ArchiveBytes.h"

namespace compositions {
namespace {

// One routine per container. `io` is an ArchiveByteReader, and the container is filled, or an
// ArchiveByteWriter, and the container is constant.

// The least size of each kind of element.
constexpr std::uint64_t kItemBytes = kNumberBytes + kTextBytes;
constexpr std::uint64_t kMediaSourceBytes = kNumberBytes + kCountBytes;
constexpr std::uint64_t kMappingBytes = 3 * kTextBytes + kNumberBytes;
constexpr std::uint64_t kPropertyBytes = kNumberBytes + 2 * kTextBytes;
constexpr std::uint64_t kKeyBytes = 5 * kTextBytes;
constexpr std::uint64_t kEnvelopeBytes = kTextBytes + kCountBytes;
constexpr std::uint64_t kTimelineEntryBytes = 3 * kTextBytes + kNumberBytes;
constexpr std::uint64_t kTimelineEventBytes = 3 * kTextBytes;
constexpr std::uint64_t kNodeBytes = kTextBytes + 2 * kCountBytes;
constexpr std::uint64_t kRegistryValueBytes = 3 * kTextBytes;

template <class Io, class List>
void SerializeNames(Io& io, List& names) {
    io.ForEach(names, kTextBytes, [&io](auto& name) { io.Name(name); });
}

template <class Io, class Map>
void SerializeEffectInstances(Io& io, Map& instances) {
    io.ForEachEntry(instances, kTextBytes, [&io](auto& effectName) { io.NameText(effectName); });
}

template <class Io, class Item>
void SerializeMediaItem(Io& io, Item& item) {
    if constexpr (Io::kLoading) {
        std::uint32_t flag;
        io.Number(flag);
        item.isRegistryValue = flag != 0;
    } else {
        io.Number(std::uint32_t{item.isRegistryValue});
    }
    io.Text(item.text);
}

template <class Io, class Map>
void SerializeMediaSources(Io& io, Map& sources) {
    io.ForEachEntry(sources, kMediaSourceBytes, [&io](auto& source) {
        io.Number(source.kind);
        io.ForEach(source.items, kItemBytes, [&io](auto& item) { SerializeMediaItem(io, item); });
    });
}

template <class Io, class List>
void SerializeMappings(Io& io, List& mappings) {
    io.ForEach(mappings, kMappingBytes, [&io](auto& mapping) {
        io.Name(mapping.property);
        io.Number(mapping.access);
        io.Name(mapping.instance);
        io.Text(mapping.targetProperty);
    });
}

template <class Io, class List>
void SerializeProperties(Io& io, List& properties) {
    io.ForEach(properties, kPropertyBytes, [&io](auto& property) {
        io.Number(property.access);
        io.Text(property.name);
        io.Text(property.value);
    });
}

template <class Io, class Key>
void SerializeEnvelopeKey(Io& io, Key& key) {
    io.Text(key.time);
    io.Text(key.value);
    io.Name(key.kind);
    io.Text(key.firstParameter);
    io.Text(key.secondParameter);
}

template <class Io, class Map>
void SerializeEnvelopes(Io& io, Map& envelopes) {
    io.ForEachEntry(envelopes, kEnvelopeBytes, [&io](auto& envelope) {
        io.Text(envelope.count);
        io.ForEach(envelope.keys, kKeyBytes, [&io](auto& key) { SerializeEnvelopeKey(io, key); });
    });
}

template <class Io, class List>
void SerializeTimelineEntries(Io& io, List& entries) {
    io.ForEach(entries, kTimelineEntryBytes, [&io](auto& entry) {
        io.Name(entry.instance);
        io.Text(entry.property);
        io.Text(entry.value);
        io.Number(entry.kind);
    });
}

template <class Io, class List>
void SerializeTimelineEvents(Io& io, List& events) {
    io.ForEach(events, kTimelineEventBytes, [&io](auto& event) {
        io.Name(event.instance);
        io.Text(event.property);
        io.Name(event.envelope);
    });
}

// A node whose name is done and whose lists are not.
template <class Node>
struct OpenNode {
    Node* node;
    int listsBegun = 0;
    std::uint64_t childrenLeft = 0;  // of the list begun last

    auto& List() const { return listsBegun == 1 ? node->inputs : node->secondary; }
};

// Begins the node's next list: its count, and when loading room for the children, which must not
// move while deeper nodes are being read.
template <class Io, class Node>
void BeginList(Io& io, OpenNode<Node>& open, std::uint64_t& promised) {
    ++open.listsBegun;
    auto& list = open.List();
    if constexpr (Io::kLoading) {
        open.childrenLeft = io.Count(kNodeBytes, promised);
        promised += open.childrenLeft;
        list.clear();
        list.reserve(open.childrenLeft);
    } else {
        open.childrenLeft = list.size();
        io.Count(open.childrenLeft);
    }
}

// Depth first with a stack of its own: trees may be a million levels deep.
template <class Io, class Node>
void SerializeStructure(Io& io, Node& root) {
    std::vector<OpenNode<Node>> stack;
    std::uint64_t promised = 0;  // children that counts spoke of and that are still to be read
    io.Name(root.name);
    stack.push_back({&root});
    while (!stack.empty()) {
        OpenNode<Node>& open = stack.back();
        if (open.childrenLeft > 0) {
            auto& list = open.List();
            Node* child;
            if constexpr (Io::kLoading) {
                child = &list.emplace_back();
                --promised;
            } else {
                child = &list[list.size() - open.childrenLeft];
            }
            --open.childrenLeft;
            io.Name(child->name);
            stack.push_back({child});
        } else if (open.listsBegun < 2) {
            BeginList(io, open, promised);
        } else {
            stack.pop_back();
        }
    }
}

template <class Io, class Map>
void SerializeNumberedInputs(Io& io, Map& inputs) {
    io.ForEachEntry(inputs, kNumberBytes, [&io](auto& number) { io.Number(number); });
}

template <class Io, class Map>
void SerializeRegistryValues(Io& io, Map& values) {
    io.ForEachEntry(values, kRegistryValueBytes, [&io](auto& value) {
        io.Text(value.first);
        io.Text(value.second);
        io.Text(value.third);
    });
}

template <class Io, class Description>
void SerializeDescription(Io& io, Description& description) {
    SerializeNames(io.Field(), description.inputs);
    SerializeEffectInstances(io.Field(), description.effectInstances);
    SerializeNames(io.Field(), description.mixes);
    SerializeMediaSources(io.Field(), description.mediaSources);
    SerializeMappings(io.Field(), description.mappings);
    SerializeProperties(io.Field(), description.properties);
    SerializeEnvelopes(io.Field(), description.envelopes);
    SerializeTimelineEntries(io.Field(), description.timelineEntries);
    SerializeTimelineEvents(io.Field(), description.timelineEvents);
    SerializeStructure(io.Field(), description.structure);
    io.Field().Text(description.name);
    io.Field().Text(description.category);
    SerializeNumberedInputs(io.Field(), description.numberedInputs);
    SerializeRegistryValues(io.Field(), description.registryValues);
    io.Field().Flag(description.isFilter);
    io.Field().Number(description.speed);
    io.Field().Flag(description.swap);
}

}  // namespace

void SaveArchiveBody(const CompositionDescription& description, std::string& bytes) {
    ArchiveByteWriter writer(bytes);
    SerializeDescription(writer, description);
}

std::size_t LoadArchiveBody(std::string_view bytes, CompositionDescription& description,
                            std::vector<std::uint64_t>* fields) {
    ArchiveByteReader reader(bytes, fields);
    SerializeDescription(reader, description);
    return bytes.size() - reader.Left();
}

}  // namespace compositions
