#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "check/Uses.h"
#include "compositions/language/Symbols.h"

namespace tarnexctl {
namespace {

using namespace compositions;
using Views = std::vector<std::wstring_view>;

bool Holds(const Views& sorted, std::wstring_view name) {
    return std::binary_search(sorted.begin(), sorted.end(), name);
}

// In the order in which the script names them.
std::vector<const StructureNode*> NodesInOrder(const StructureNode& root) {
    std::vector<const StructureNode*> nodes;
    if (root.name.View().empty()) return nodes;
    std::vector<const StructureNode*> pending{&root};
    while (!pending.empty()) {
        const StructureNode* const node = pending.back();
        pending.pop_back();
        nodes.push_back(node);
        for (auto child = node->inputs.rbegin(); child != node->inputs.rend(); ++child) {
            pending.push_back(&*child);
        }
    }
    return nodes;
}

class Wiring {
public:
    Wiring(const Subject& subject, Diagnostics& diagnostics)
        : subject_(subject),
          description_(subject.Description()),
          diagnostics_(diagnostics),
          nodes_(NodesInOrder(description_.structure)) {
        for (const auto& lexem : subject.Record().Statements(Section::kStructure)) {
            names_ += lexem.rule == LxIdent ? 1 : 0;
        }
        for (const auto& statement : subject.Record().Statements(Section::kEffects)) {
            const auto pieces = subject.Record().Pieces(statement);
            declaredMixes_ += pieces.size() == 2 && IsKeyword(pieces[1], L"MIX") ? 1 : 0;
        }
        wired_.reserve(nodes_.size());
        for (const StructureNode* node : nodes_) wired_.push_back(node->name.View());
        std::sort(wired_.begin(), wired_.end());
        for (const UpperName& mix : description_.mixes) mixes_.push_back(mix.View());
        std::sort(mixes_.begin(), mixes_.end());
    }

    void Check() {
        CheckRoots();
        CheckMixes();
        if (nodes_.empty() || names_ > nodes_.size()) return;  // told already, and why
        for (const UpperName& name : description_.inputs) CheckWired(name, "C501", "the input ");
        for (const auto& [name, number] : description_.numberedInputs) {
            CheckWired(name, "C501", "the input ");
        }
        for (const auto& [name, effect] : description_.effectInstances) {
            CheckWired(name, "C502", "the effect ");
        }
        for (const auto& [name, source] : description_.mediaSources) {
            CheckWired(name, "C503", "the media source ");
        }
        for (std::size_t i = 0; i < declaredMixes_; ++i) {
            CheckWired(description_.mixes[i], "C504", "the mix ");
        }
    }

private:
    void CheckWired(const UpperName& name, const char* code, const char* what) {
        if (Holds(wired_, name.View())) return;
        if (!declarations_) declarations_.emplace(subject_, kDeclaring);
        const Declarations::Declared declared = declarations_->Find(name);
        diagnostics_.Add(
            code, declared.range,
            what + Quoted(declared.name) + " is not wired: STRUCTURE does not name it");
    }

    // The statement in which STRUCTURE names the node; of several trees the last one was kept.
    const RecordedStatement& NamedAt(std::size_t node) const {
        std::size_t number = names_ - nodes_.size() + node;
        for (const auto& lexem : subject_.Record().Statements(Section::kStructure)) {
            if (lexem.rule == LxIdent && number-- == 0) return lexem;
        }
        return subject_.Record().Statements(Section::kStructure).front();
    }

    void CheckRoots() {
        const auto statements = subject_.Record().Statements(Section::kStructure);
        if (nodes_.empty()) {
            diagnostics_.Add("C507", statements.front().range,
                             "nothing is wired: the composition has no output", {}, {"a name"});
        } else if (names_ > nodes_.size()) {
            const RecordedStatement& last = NamedAt(0);
            const std::wstring_view name = subject_.Record().Pieces(last)[0];
            diagnostics_.Add(
                "C506", last.range,
                "several outermost names: " + Quoted(name) + ", the last one, is the output",
                {"what stands in front of it is not used"});
        }
    }

    void CheckMixes() {
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            const StructureNode& node = *nodes_[i];
            const bool isMix = node.inputs.size() < 2 && Holds(mixes_, node.name.View()) &&
                               !description_.effectInstances.contains(node.name);
            if (!isMix) continue;
            diagnostics_.Add("C505", diagnostics_.HasRoom() ? NamedAt(i).range : ByteRange(),
                             node.inputs.empty() ? "a mix that nothing feeds"
                                                 : "a mix of one: it changes nothing");
        }
        // A name that is there twice, declared and made.
        for (std::size_t i = declaredMixes_; i < description_.mixes.size(); ++i) {
            const std::wstring_view name = description_.mixes[i].View();
            const auto range = std::equal_range(mixes_.begin(), mixes_.end(), name);
            if (range.second - range.first < 2) continue;
            if (!declarations_) declarations_.emplace(subject_, kDeclaring);
            diagnostics_.Add("C509", declarations_->Find(description_.mixes[i]).range,
                             "a mix that STRUCTURE makes is called " + Quoted(name) + " too",
                             {"each MIX makes one called MIX and the number of mixes so far"});
        }
    }

    static constexpr std::initializer_list<Section> kDeclaring = {Section::kSources,
                                                                  Section::kEffects};

    const Subject& subject_;
    const CompositionDescription& description_;
    Diagnostics& diagnostics_;
    const std::vector<const StructureNode*> nodes_;
    std::size_t names_ = 0;          // that STRUCTURE holds
    std::size_t declaredMixes_ = 0;  // the first ones of the mixes
    Views wired_;
    Views mixes_;
    std::optional<Declarations> declarations_;
};

}  // namespace

Declarations::Declarations(const Subject& subject, std::initializer_list<Section> sections) {
    for (const Section section : sections) {
        for (const RecordedStatement& statement : subject.Record().Statements(section)) {
            const std::wstring_view name = subject.Record().Pieces(statement)[0];
            declared_.try_emplace(UpperName(name),
                                  Declared{subject.RangeOf(statement, name), name});
        }
    }
}

Declarations::Declared Declarations::Find(const UpperName& name) const {
    const auto found = declared_.find(name);
    return found == declared_.end() ? Declared() : found->second;
}

void CheckWiring(const Subject& subject, Diagnostics& diagnostics) {
    const std::int32_t status = subject.Status();
    if (status != status::kRead && status != status::kFilterNeedsOneInput) return;
    if (subject.IsWhole(Section::kStructure)) Wiring(subject, diagnostics).Check();
}

}  // namespace tarnexctl
