// STRUCTURE, and which of the mixes it makes.

#include <limits>
#include <unordered_map>

#include "compositions/language/Symbols.h"
#include "description/ScriptBytes.h"
#include "extraction/Sections.h"

namespace tarnexctl {
namespace {

using namespace compositions;

// Calls `visit` with every node of the first lists, in the order in which a script writes them.
template <class Visit>
void ForEachNode(const StructureNode& root, Visit visit) {
    std::vector<const StructureNode*> pending{&root};
    while (!pending.empty()) {
        const StructureNode* const node = pending.back();
        pending.pop_back();
        visit(*node);
        for (std::size_t i = node->inputs.size(); i > 0; --i)
            pending.push_back(&node->inputs[i - 1]);
    }
}

bool IsEmpty(const StructureNode& root) {
    return root.name.Length() == 0 && root.inputs.empty() && root.secondary.empty();
}

class StructureWriter {
public:
    StructureWriter(const CompositionDescription& description, std::size_t firstMade,
                    const DeclaredNames& names, Gaps& gaps)
        : names_(names), gaps_(gaps) {
        for (std::size_t i = firstMade; i < description.mixes.size(); ++i) {
            made_.insert(description.mixes[i]);
        }
    }

    std::string Write(const StructureNode& root) {
        if (IsEmpty(root)) return "OUTPUT =\n";
        struct Open {
            const StructureNode* node;
            std::size_t next = 0;  // of its inputs
            bool any = false;      // one of them was written
        };
        std::vector<Open> open;
        std::string text = "OUTPUT = ";
        if (WriteName(root, text)) open.push_back({&root});
        while (!open.empty()) {
            Open& top = open.back();
            if (top.next == top.node->inputs.size()) {
                if (top.any) text += ")";
                open.pop_back();
                continue;
            }
            const StructureNode& child = top.node->inputs[top.next++];
            std::string name;
            if (!WriteName(child, name)) continue;
            text += (top.any ? ", " : "(") + name;
            top.any = true;
            open.push_back({&child});
        }
        return text + "\n";
    }

private:
    // A node that cannot be written is left out with all that feeds it.
    bool WriteName(const StructureNode& node, std::string& text) {
        const std::string where = Where("node", node.name.View());
        if (!node.secondary.empty()) {
            gaps_.push_back({where, "a script has no second list of what feeds a node"});
        }
        if (made_.contains(node.name)) {
            text += "MIX";
            return true;
        }
        if (!names_.contains(node.name) || node.name == std::wstring_view(L"MIX")) {
            gaps_.push_back({where, names_.contains(node.name)
                                        ? "the word MIX makes a node of another name"
                                        : "the script does not declare it"});
            return false;
        }
        text += *ScriptBytes(node.name.View());  // it was declared, so it has bytes
        return true;
    }

    const DeclaredNames& names_;
    Gaps& gaps_;
    DeclaredNames made_;
};

}  // namespace

std::string StructureText(const CompositionDescription& description, std::size_t firstMade,
                          const DeclaredNames& names, Gaps& gaps) {
    return StructureWriter(description, firstMade, names, gaps).Write(description.structure);
}

std::size_t FirstMadeMix(const CompositionDescription& description) {
    struct Occurrence {
        std::size_t count = 0;
        std::size_t position = 0;
    };
    std::unordered_map<std::wstring_view, Occurrence> occurrences;
    std::size_t position = 0;
    ForEachNode(description.structure, [&](const StructureNode& node) {
        Occurrence& occurrence = occurrences[node.name.View()];
        ++occurrence.count;
        occurrence.position = position++;
    });
    std::size_t first = description.mixes.size();
    std::size_t next = std::numeric_limits<std::size_t>::max();
    for (; first > 0; --first) {
        const UpperName& name = description.mixes[first - 1];
        const auto found = occurrences.find(name.View());
        if (name.View() != L"MIX" + std::to_wstring(first - 1) || found == occurrences.end() ||
            found->second.count != 1 || found->second.position > next) {
            break;
        }
        next = found->second.position;
    }
    return first;
}

}  // namespace tarnexctl
