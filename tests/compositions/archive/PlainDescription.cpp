#include "compositions/archive/PlainDescription.h"

namespace plain {
namespace {

// A wide text as 16-bit units.
Text Units(std::wstring_view text) {
    Text units;
    for (const wchar_t character : text) {
        const auto value = static_cast<unsigned long>(character);
        if (sizeof(wchar_t) == 4 && value >= 0x10000) {
            units += static_cast<char16_t>(0xD800 + (value - 0x10000) / 0x400);
            units += static_cast<char16_t>(0xDC00 + (value - 0x10000) % 0x400);
        } else {
            units += static_cast<char16_t>(value);
        }
    }
    return units;
}

Text Units(const compositions::UpperName& name) {
    return name.Data() == nullptr ? Text() : Units(std::wstring_view(name.Data()));
}

std::vector<Text> Units(const compositions::Names& names) {
    std::vector<Text> all;
    for (const auto& name : names) all.push_back(Units(name));
    return all;
}

std::vector<Node> NodesOf(const std::vector<compositions::StructureNode>& nodes) {
    std::vector<Node> all;
    for (const auto& node : nodes) {
        all.push_back({Units(node.name), NodesOf(node.inputs), NodesOf(node.secondary)});
    }
    return all;
}

MediaSource SourceOf(const compositions::MediaSource& source) {
    MediaSource plainSource{source.kind, {}};
    for (const auto& item : source.items) {
        plainSource.items.push_back({item.isRegistryValue ? 1u : 0u, Units(item.text)});
    }
    return plainSource;
}

Envelope EnvelopeOf(const compositions::Envelope& envelope) {
    Envelope plainEnvelope{Units(envelope.count), {}};
    for (const auto& key : envelope.keys) {
        plainEnvelope.points.push_back({Units(key.time), Units(key.value), Units(key.kind),
                                        Units(key.firstParameter), Units(key.secondParameter)});
    }
    return plainEnvelope;
}

void TakeLists(const compositions::CompositionDescription& from, Description& to) {
    to.inputs = Units(from.inputs);
    to.mixes = Units(from.mixes);
    for (const auto& each : from.mappings) {
        to.mappings.push_back(
            {Units(each.property), each.access, Units(each.instance), Units(each.targetProperty)});
    }
    for (const auto& each : from.properties) {
        to.properties.push_back({each.access, Units(each.name), Units(each.value)});
    }
    for (const auto& each : from.timelineEntries) {
        to.entries.push_back(
            {Units(each.instance), Units(each.property), Units(each.value), each.kind});
    }
    for (const auto& each : from.timelineEvents) {
        to.events.push_back({Units(each.instance), Units(each.property), Units(each.envelope)});
    }
}

// Effect names are encoded as names, which end at a zero character.
void TakeMaps(const compositions::CompositionDescription& from, Description& to) {
    for (const auto& [key, effect] : from.effectInstances) {
        to.effects[Units(key)] = Units(std::wstring_view(effect.c_str()));
    }
    for (const auto& [key, source] : from.mediaSources) to.media[Units(key)] = SourceOf(source);
    for (const auto& [key, envelope] : from.envelopes) {
        to.envelopes[Units(key)] = EnvelopeOf(envelope);
    }
    for (const auto& [key, number] : from.numberedInputs) {
        to.numberedInputs[Units(key)] = static_cast<std::uint32_t>(number);
    }
    for (const auto& [key, value] : from.registryValues) {
        to.registryValues[Units(key)] = {Units(value.first), Units(value.second),
                                         Units(value.third)};
    }
}

}  // namespace

Description Of(const compositions::CompositionDescription& description) {
    Description plainDescription;
    TakeLists(description, plainDescription);
    TakeMaps(description, plainDescription);
    const compositions::StructureNode& root = description.structure;
    plainDescription.structure = {Units(root.name), NodesOf(root.inputs), NodesOf(root.secondary)};
    plainDescription.name = Units(description.name);
    plainDescription.category = Units(description.category);
    plainDescription.isFilter = description.isFilter;
    plainDescription.speed = static_cast<std::uint32_t>(description.speed);
    plainDescription.swap = description.swap;
    return plainDescription;
}

}  // namespace plain
