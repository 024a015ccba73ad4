#include "description/DescriptionDocument.h"

#include <string>
#include <vector>

#include "compositions/ReadStatus.h"
#include "description/NodeKind.h"
#include "frame/Text.h"
#include "platform/CodePage.h"
#include "probe/PropertyValue.h"

namespace tarnexctl {
namespace {

using compositions::CompositionDescription;
using compositions::StructureNode;
using compositions::UpperName;

constexpr int kSchemaVersion = 1;

bool IsHigh(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLow(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

bool IsUnicode(std::u16string_view units) {
    for (std::size_t i = 0; i < units.size(); ++i) {
        if (IsLow(units[i])) return false;
        if (!IsHigh(units[i])) continue;
        if (++i == units.size() || !IsLow(units[i])) return false;
    }
    return true;
}

Json Text(const UpperName& name) {
    return TextDocument(name.View());
}

Json Text(const std::wstring& text) {
    return TextDocument(text);
}

// One element for each of the container's, by `make`.
template <class Container, class Make>
Json ListOf(const Container& container, Make make) {
    Json list = Json::array();
    for (const auto& element : container) list.push_back(make(element));
    return list;
}

// A number of an enumeration as its word, one that has none as itself.
Json Word(std::uint32_t value, const std::vector<const char*>& words) {
    return value < words.size() ? Json(words[value]) : Json(value);
}

Json StatusDocument(std::int32_t value) {
    return {{"status", value}, {"text", compositions::ReadStatusText(value)}};
}

Json SectionsDocument(const LoadedDescription& loaded) {
    Json sections = Json::array();
    if (loaded.isArchive) return sections;  // it keeps none
    for (std::size_t i = 0; i < compositions::kSectionCount; ++i) {
        const auto section = static_cast<compositions::Section>(i);
        Json entry = {{"section", compositions::SectionKeyword(section)}};
        entry.update(StatusDocument(loaded.script->GetSectionStatuses()[section]));
        sections.push_back(std::move(entry));
    }
    return sections;
}

Json SourceDocument(const LoadedDescription& loaded) {
    Json source = {{"file", ValidUtf8(loaded.file)},
                   {"kind", loaded.isArchive ? "archive" : "script"}};
    if (loaded.isArchive) source["version"] = loaded.archiveVersion;
    return source;
}

Json MediaDocument(const compositions::MediaSource& source) {
    return {{"kind", Word(source.kind, {"bitmap", "movie"})},
            {"items", ListOf(source.items, [](const compositions::MediaItem& item) {
                 return Json{{"text", Text(item.text)}, {"isRegistryValue", item.isRegistryValue}};
             })}};
}

Json EnvelopeDocument(const compositions::Envelope& envelope) {
    return {{"count", Text(envelope.count)},
            {"keys", ListOf(envelope.keys, [](const compositions::EnvelopeKey& key) {
                 return Json{{"time", Text(key.time)},
                             {"value", Text(key.value)},
                             {"kind", Text(key.kind)},
                             {"firstParameter", Text(key.firstParameter)},
                             {"secondParameter", Text(key.secondParameter)}};
             })}};
}

// A map's entry: its key, then what `rest` holds.
Json Named(const UpperName& name, const Json& rest) {
    Json entry = {{"name", Text(name)}};
    entry.update(rest);
    return entry;
}

void AddAccess(Json& entry, std::uint32_t access) {
    entry["access"] = access;
    entry["accessWords"] = AccessWords(access);
}

void AddDeclarations(Json& document, const CompositionDescription& d) {
    const auto name = [](const UpperName& each) { return Text(each); };
    document["registryValues"] = ListOf(d.registryValues, [](const auto& entry) {
        return Named(entry.first, {{"first", Text(entry.second.first)},
                                   {"second", Text(entry.second.second)},
                                   {"third", Text(entry.second.third)}});
    });
    document["inputs"] = ListOf(d.inputs, name);
    document["numberedInputs"] = ListOf(d.numberedInputs, [](const auto& entry) {
        return Named(entry.first, {{"number", entry.second}});
    });
    document["mediaSources"] = ListOf(d.mediaSources, [](const auto& entry) {
        return Named(entry.first, MediaDocument(entry.second));
    });
    document["effects"] = ListOf(d.effectInstances, [](const auto& entry) {
        return Named(entry.first, {{"effect", Text(entry.second)}});
    });
    document["mixes"] = ListOf(d.mixes, name);
}

// Nodes in the order in which a script writes them; children are named by their position. The
// first one is the output's; there is none when nothing feeds the output.
Json StructureDocument(const CompositionDescription& d) {
    Json nodes = Json::array();
    const StructureNode& root = d.structure;
    if (root.name.Length() == 0 && root.inputs.empty() && root.secondary.empty()) return nodes;
    struct Pending {
        const StructureNode* node;
        std::size_t parent;
        const char* list;
    };
    const NodeKinds kinds(d);
    std::vector<Pending> pending{{&root, 0, nullptr}};
    while (!pending.empty()) {
        const Pending next = pending.back();
        pending.pop_back();
        const std::size_t index = nodes.size();
        nodes.push_back({{"name", Text(next.node->name)},
                         {"kind", NodeKindWord(kinds.Of(next.node->name))},
                         {"inputs", Json::array()},
                         {"secondary", Json::array()}});
        if (next.list != nullptr) nodes[next.parent][next.list].push_back(index);
        const auto add = [&](const std::vector<StructureNode>& children, const char* list) {
            for (std::size_t i = children.size(); i > 0; --i) {
                pending.push_back({&children[i - 1], index, list});
            }
        };
        add(next.node->secondary, "secondary");
        add(next.node->inputs, "inputs");
    }
    return nodes;
}

void AddParameters(Json& document, const CompositionDescription& d) {
    document["properties"] = ListOf(d.properties, [](const compositions::PropertyRecord& record) {
        Json entry = {{"name", Text(record.name)}, {"value", Text(record.value)}};
        AddAccess(entry, record.access);
        return entry;
    });
    document["mappings"] = ListOf(d.mappings, [](const compositions::Mapping& mapping) {
        Json entry = {{"property", Text(mapping.property)},
                      {"instance", Text(mapping.instance)},
                      {"targetProperty", Text(mapping.targetProperty)}};
        AddAccess(entry, mapping.access);
        return entry;
    });
    document["envelopes"] = EnvelopesDocument(d.envelopes);
    document["timelineEntries"] =
        ListOf(d.timelineEntries, [](const compositions::TimelineEntry& entry) {
            return Json{{"instance", Text(entry.instance)},
                        {"property", Text(entry.property)},
                        {"value", Text(entry.value)},
                        {"kind", Word(entry.kind, {"number", "string", "variable"})}};
        });
    document["timelineEvents"] =
        ListOf(d.timelineEvents, [](const compositions::TimelineEvent& event) {
            return Json{{"instance", Text(event.instance)},
                        {"property", Text(event.property)},
                        {"envelope", Text(event.envelope)}};
        });
}

}  // namespace

Json TextDocument(std::wstring_view text) {
    std::u16string units(2 * text.size(), u'\0');
    units.resize(platform::ToUtf16(text, units.data(), units.size()));
    if (IsUnicode(units)) return ToUtf8(text);
    Json list = Json::array();
    for (const char16_t unit : units) list.push_back(static_cast<unsigned>(unit));
    return {{"utf16", std::move(list)}};
}

Json EnvelopesDocument(const compositions::Envelopes& envelopes) {
    return ListOf(envelopes, [](const auto& entry) {
        return Named(entry.first, EnvelopeDocument(entry.second));
    });
}

Json DescriptionDocument(const LoadedDescription& loaded) {
    const CompositionDescription& d = loaded.Get();
    Json document;
    document["schema"] = kSchemaVersion;
    document["source"] = SourceDocument(loaded);
    document["readStatus"] = StatusDocument(loaded.script->GetReadStatus());
    document["sections"] = SectionsDocument(loaded);
    document["name"] = Text(d.name);
    document["category"] = Text(d.category);
    document["isFilter"] = d.isFilter;
    document["speed"] = d.speed;
    document["swap"] = d.swap;
    AddDeclarations(document, d);
    document["structure"] = StructureDocument(d);
    AddParameters(document, d);
    return document;
}

}  // namespace tarnexctl
