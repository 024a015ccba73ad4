#include "description/NodeKind.h"

namespace tarnexctl {

const char* NodeKindWord(NodeKind kind) {
    switch (kind) {
        case NodeKind::kEffect:
            return "effect";
        case NodeKind::kInput:
            return "input";
        case NodeKind::kNumberedInput:
            return "numbered input";
        case NodeKind::kBitmap:
            return "bitmap";
        case NodeKind::kMovie:
            return "movie";
        case NodeKind::kMix:
            return "mix";
        case NodeKind::kUnknown:
            return "unknown";
    }
    return "unknown";
}

NodeKinds::NodeKinds(const compositions::CompositionDescription& description)
    : description_(description) {
    for (const compositions::UpperName& name : description.inputs) inputs_.insert(name.View());
    for (const compositions::UpperName& name : description.mixes) mixes_.insert(name.View());
}

NodeKind NodeKinds::Of(const compositions::UpperName& name) const {
    if (description_.effectInstances.contains(name)) return NodeKind::kEffect;
    if (inputs_.contains(name.View())) return NodeKind::kInput;
    const auto media = description_.mediaSources.find(name);
    if (media != description_.mediaSources.end()) {
        return media->second.kind == compositions::kMovie ? NodeKind::kMovie : NodeKind::kBitmap;
    }
    if (description_.numberedInputs.contains(name)) return NodeKind::kNumberedInput;
    return mixes_.contains(name.View()) ? NodeKind::kMix : NodeKind::kUnknown;
}

}  // namespace tarnexctl
