#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "helpers/scripting/ProgramBuilder.h"

namespace helpers::scripting {
namespace {

struct Step;
using Steps = std::vector<Step>;
using Alternatives = std::span<const Steps>;

// What is left of alternatives behind the steps that all of them begin with.
struct Remainders {
    std::vector<Steps> alternatives;
    std::size_t depth;  // how many steps those are

    bool operator==(const Remainders& other) const;
};

// One step of an alternative that was laid flat.
struct Step {
    const GrammarNode* node;  // a lexem, a rule to call, or a choice
    Mode mode;
    std::shared_ptr<const Remainders> remainders =
        nullptr;  // or these; neither adds an empty piece

    bool AddsEmpty() const { return node == nullptr && remainders == nullptr; }
    bool operator==(const Step& other) const {
        return mode == other.mode && IsSame(node, other.node) &&
               IsSame(remainders.get(), other.remainders.get());
    }

private:
    template <class Part>
    static bool IsSame(const Part* left, const Part* right) {
        return left == right || (left != nullptr && right != nullptr && *left == *right);
    }
};

bool Remainders::operator==(const Remainders& other) const {
    return depth == other.depth && alternatives == other.alternatives;
}

class Layout {
public:
    explicit Layout(ProgramBuilder& builder) : builder_(builder) {}

    void LayOut(const GrammarNode& node, const Mode& mode, bool first) {
        std::vector<Steps> alternatives;
        CollectAlternatives(node, mode, alternatives);
        EmitAlternatives(alternatives, 0, mode.append == Append::kNo, first);
    }

private:
    // Rules of more nodes than this, those of rules in them included, stay calls.
    static constexpr std::size_t kMostNodesInPlace = 160;

    NodeSort Sort(const GrammarNode& node) const { return SortOf(builder_.Tables(), node); }

    // The rule's node when it is laid out in place of a call; null when it is called.
    const GrammarNode* InPlace(const GrammarNode& node) const {
        if (builder_.Analysis().IsRecursive(node.id)) return nullptr;
        const GrammarNode& rule = builder_.Tables().Rules()[node.id];
        return Nodes(rule, kMostNodesInPlace) < kMostNodesInPlace ? &rule : nullptr;
    }

    // Counts nodes as they would be laid out; stops at `most`.
    std::size_t Nodes(const GrammarNode& node, std::size_t most) const {
        std::size_t count = 1;
        const NodeSort sort = Sort(node);
        if (sort == NodeSort::kRule && !builder_.Analysis().IsRecursive(node.id)) {
            return most <= 1 ? most : 1 + Nodes(builder_.Tables().Rules()[node.id], most - 1);
        }
        if (sort != NodeSort::kChoice && sort != NodeSort::kSequence) return count;
        for (const GrammarNode& child : sort == NodeSort::kChoice ? node.choice : node.sequence) {
            if (count >= most) return most;
            count += Nodes(child, most - count);
        }
        return count;
    }

    void CollectAlternatives(const GrammarNode& node, const Mode& mode, std::vector<Steps>& out) {
        if (Sort(node) != NodeSort::kChoice) {
            CollectSteps(node, mode, out.emplace_back());
            return;
        }
        for (const GrammarNode& child : node.choice) {
            CollectAlternatives(child, {true, mode.append}, out);
        }
    }

    void CollectSteps(const GrammarNode& node, const Mode& mode, Steps& out) {
        switch (Sort(node)) {
            case NodeSort::kSequence:
                CollectSteps(node.sequence[0], builder_.ChildMode(node, mode, 0), out);
                CollectSteps(node.sequence[1], builder_.ChildMode(node, mode, 1), out);
                if ((node.flags & kAddEmpty) != 0) out.push_back({nullptr, {}});
                break;
            case NodeSort::kChoice:
                CollectChoice(node, mode, out);
                break;
            case NodeSort::kRule:
                if (const GrammarNode* rule = InPlace(node)) {
                    CollectSteps(*rule, mode, out);
                    break;
                }
                [[fallthrough]];
            default:
                out.push_back({&node, mode});
        }
    }

    // What all alternatives begin with goes in front of the choice.
    void CollectChoice(const GrammarNode& node, const Mode& mode, Steps& out) {
        Remainders remainders{{}, 0};
        if (mode.append == Append::kNo) {
            CollectAlternatives(node, mode, remainders.alternatives);
            remainders.depth = CountCommon(remainders.alternatives);
        }
        if (remainders.depth == 0) {
            out.push_back({&node, mode});
            return;
        }
        const Steps& first = remainders.alternatives.front();
        out.insert(out.end(), first.begin(), first.begin() + remainders.depth);
        out.push_back({nullptr, {}, std::make_shared<const Remainders>(std::move(remainders))});
    }

    static std::size_t CountCommon(Alternatives all) {
        std::size_t depth = 0;
        while (depth < all.front().size() && CountSharing(all, depth) == all.size()) ++depth;
        return depth;
    }

    // `depth` steps, the same in all of them, are laid out already.
    void EmitAlternatives(Alternatives all, std::size_t depth, bool mayShare, bool first) {
        if (all.front().size() == depth) return;  // matches as it is; the others are never tried
        const std::size_t sharing = mayShare ? CountSharing(all, depth) : 1;
        if (sharing < all.size()) return EmitChoice(all, sharing, depth, mayShare, first);
        EmitStep(all.front()[depth], first && depth == 0);
        EmitAlternatives(all, depth + 1, mayShare, first);
    }

    // How many alternatives from the first on go on with the same step.
    static std::size_t CountSharing(Alternatives all, std::size_t depth) {
        std::size_t count = 1;
        while (count < all.size() && all[count].size() > depth &&
               all[count][depth] == all[0][depth]) {
            ++count;
        }
        return count;
    }

    void EmitChoice(Alternatives all, std::size_t split, std::size_t depth, bool mayShare,
                    bool first) {
        const Alternatives head = all.first(split);
        const Alternatives rest = all.subspan(split);
        const bool exclusive = AreExclusive(head, rest, depth);
        const std::uint32_t choice = builder_.Here();
        const std::optional<std::wstring> begins = FirstCharacters(head, depth);
        Draft& draft = builder_.Emit(exclusive ? Operation::kTest : Operation::kChoice);
        draft.first = begins ? &builder_.SetOf(*begins) : nullptr;
        draft.instruction.rereads = depth != 0;
        EmitAlternatives(head, depth, mayShare, first);
        const std::uint32_t leave = builder_.Here();
        Draft& end = builder_.Emit(Operation::kCommit);
        end.isJump = exclusive;
        end.instruction.rereads = depth != 0;
        builder_.At(choice).target = builder_.Here();
        EmitAlternatives(rest, depth, mayShare, first);
        builder_.At(leave).target = builder_.Here();
    }

    // Whether the next character decides, so that nobody needs to come back for the rest. Behind
    // shared steps the rest would read those again and so change what was read last: then coming
    // back is spared only where the head reads nothing before it fails.
    bool AreExclusive(Alternatives head, Alternatives rest, std::size_t depth) const {
        const std::optional<std::wstring> begins = FirstCharacters(head, depth);
        const std::optional<std::wstring> others = FirstCharacters(rest, depth);
        if (!begins || !others || begins->find_first_of(*others) != others->npos) return false;
        return depth == 0 || (head.size() == 1 && FailsAtOnce(head.front(), depth));
    }

    // Whether the steps from `depth` on read nothing unless they match.
    bool FailsAtOnce(const Steps& steps, std::size_t depth) const {
        if (LexemOf(steps[depth]) == nullptr) return false;
        for (std::size_t next = depth + 1; next < steps.size(); ++next) {
            const bool isSure =
                steps[next].AddsEmpty() || SurelyFollows(steps[next - 1], steps[next]);
            if (!isSure) return false;
        }
        return true;
    }

    // Whether the second step is the mark at which the first one, if it matches, ends.
    bool SurelyFollows(const Step& first, const Step& second) const {
        const CompiledLexem* lexem = LexemOf(first);
        const CompiledLexem* mark = LexemOf(second);
        return lexem != nullptr && mark != nullptr && lexem->shape == LexemShape::kUntil &&
               mark->shape == LexemShape::kMark && mark->mark == lexem->onlyStop &&
               !builder_.IsBlank(mark->mark);
    }

    // The lexem, when the step reads one and whatever it is.
    const CompiledLexem* LexemOf(const Step& step) const {
        const bool isLexem = step.node != nullptr && Sort(*step.node) == NodeSort::kLexem;
        return isLexem && step.node->keyword.empty() ? &builder_.Lexem(step.node->id) : nullptr;
    }

    // All characters that the alternatives may begin with; none for alternatives that may match
    // without reading anything.
    std::optional<std::wstring> FirstCharacters(Alternatives alternatives,
                                                std::size_t depth) const {
        std::wstring characters;
        for (const Steps& steps : alternatives) {
            if (steps.size() == depth || steps[depth].AddsEmpty()) return std::nullopt;
            const Step& step = steps[depth];
            const std::optional<std::wstring> more =
                step.node != nullptr
                    ? builder_.Analysis().FirstCharacters(*step.node)
                    : FirstCharacters(step.remainders->alternatives, step.remainders->depth);
            if (!more) return std::nullopt;
            characters += *more;
        }
        return characters;
    }

    void EmitStep(const Step& step, bool first) {
        if (step.AddsEmpty()) {
            builder_.Emit(Operation::kAddEmpty);
            return;
        }
        if (step.remainders != nullptr) {
            return EmitAlternatives(step.remainders->alternatives, step.remainders->depth, true,
                                    false);
        }
        switch (Sort(*step.node)) {
            case NodeSort::kLexem:
                return builder_.EmitLexem(*step.node, step.mode);
            case NodeSort::kRule:
                return builder_.EmitCall(step.node->id, step.mode, first);
            case NodeSort::kChoice:
                return LayOut(*step.node, step.mode, first);
            default:
                builder_.Emit(Operation::kFail);
        }
    }

    ProgramBuilder& builder_;
};

}  // namespace

void LayOutFactored(ProgramBuilder& builder, const GrammarNode& node, const Mode& mode,
                    bool first) {
    Layout(builder).LayOut(node, mode, first);
}

}  // namespace helpers::scripting
