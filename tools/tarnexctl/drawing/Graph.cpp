#include "drawing/Graph.h"

#include <map>
#include <utility>

#include "description/AuthorText.h"
#include "description/NodeKind.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

using compositions::CompositionDescription;
using compositions::Mapping;
using compositions::StructureNode;
using compositions::UpperName;

std::string Shown(std::wstring_view text) {
    return Printable(AuthorText(text));
}

DrawnKind DrawnAs(NodeKind kind) {
    switch (kind) {
        case NodeKind::kEffect:
            return DrawnKind::kEffect;
        case NodeKind::kInput:
        case NodeKind::kNumberedInput:
            return DrawnKind::kInput;
        case NodeKind::kBitmap:
        case NodeKind::kMovie:
            return DrawnKind::kMedia;
        case NodeKind::kMix:
            return DrawnKind::kMix;
        case NodeKind::kUnknown:
            return DrawnKind::kUnknown;
    }
    return DrawnKind::kUnknown;
}

std::string PathText(const compositions::MediaSource& source) {
    std::string path;
    for (const compositions::MediaItem& item : source.items) {
        const std::string text = Shown(item.text);
        path += item.isRegistryValue ? "%" + text + "%" : text;
    }
    return path;
}

class GraphMaker {
public:
    explicit GraphMaker(const CompositionDescription& description)
        : description_(description), kinds_(description) {
        for (const Mapping& mapping : description.mappings) {
            mappings_[mapping.instance.View()].push_back(&mapping);
        }
    }

    Graph Make() {
        graph_.title = Shown(description_.name);
        if (!description_.category.empty()) graph_.title += "\\" + Shown(description_.category);
        graph_.nodes.push_back({DrawnKind::kOutput, "OUTPUT", "", 0, ""});
        const StructureNode& root = description_.structure;
        if (root.name.Length() == 0 && root.inputs.empty() && root.secondary.empty()) {
            return std::move(graph_);
        }
        std::vector<std::pair<const StructureNode*, std::size_t>> pending{{&root, 0}};
        while (!pending.empty()) {
            const auto [node, feeds] = pending.back();
            pending.pop_back();
            const std::size_t index = graph_.nodes.size();
            Add(*node, feeds);
            for (const auto* children : {&node->secondary, &node->inputs}) {
                for (std::size_t i = children->size(); i > 0; --i) {
                    pending.emplace_back(&(*children)[i - 1], index);
                }
            }
        }
        return std::move(graph_);
    }

private:
    void Add(const StructureNode& node, std::size_t feeds) {
        const NodeKind kind = kinds_.Of(node.name);
        const std::size_t index = graph_.nodes.size();
        graph_.nodes.push_back(
            {DrawnAs(kind), Shown(node.name.View()), Detail(kind, node.name), feeds, ""});
        if (kind == NodeKind::kEffect) AddMappings(node.name, index);
    }

    std::string Detail(NodeKind kind, const UpperName& name) const {
        if (kind == NodeKind::kEffect) return Shown(description_.effectInstances.at(name));
        if (kind == NodeKind::kNumberedInput) {
            return "input " + std::to_string(description_.numberedInputs.at(name));
        }
        if (kind == NodeKind::kBitmap || kind == NodeKind::kMovie) {
            return PathText(description_.mediaSources.at(name));
        }
        return "";
    }

    void AddMappings(const UpperName& instance, std::size_t index) {
        const auto found = mappings_.find(instance.View());
        if (found == mappings_.end()) return;
        for (const Mapping* mapping : found->second) {
            graph_.nodes.push_back({DrawnKind::kProperty, Shown(mapping->property.View()), "",
                                    index, Shown(mapping->targetProperty)});
        }
        mappings_.erase(found);  // once is enough
    }

    const CompositionDescription& description_;
    NodeKinds kinds_;
    std::map<std::wstring_view, std::vector<const Mapping*>> mappings_;  // by instance
    Graph graph_;
};

}  // namespace

const char* DrawnKindWord(DrawnKind kind) {
    switch (kind) {
        case DrawnKind::kOutput:
            return "output";
        case DrawnKind::kEffect:
            return "effect";
        case DrawnKind::kInput:
            return "input";
        case DrawnKind::kMedia:
            return "media";
        case DrawnKind::kMix:
            return "mix";
        case DrawnKind::kProperty:
            return "property";
        case DrawnKind::kUnknown:
            return "unknown";
    }
    return "unknown";
}

Graph MakeGraph(const CompositionDescription& description) {
    return GraphMaker(description).Make();
}

}  // namespace tarnexctl
