#include "helpers/scripting/ProgramBuilder.h"

namespace helpers::scripting {
namespace {

// Choices store, whatever they are told; what to append to passes to both alternatives.
void LayOutChoice(ProgramBuilder& builder, const GrammarNode& node, const Mode& mode, bool first) {
    if (node.choice.size() != 2) builder.EmitReport(kChoiceChildrenLine);
    const Mode childMode{true, mode.append};
    const std::uint32_t choice = builder.Here();
    builder.Emit(Operation::kChoice);
    LayOutPlainly(builder, node.choice[0], childMode, first);
    const std::uint32_t commit = builder.Here();
    builder.Emit(Operation::kCommit);
    builder.At(choice).target = builder.Here();
    if (node.choice.size() > 1) {
        LayOutPlainly(builder, node.choice[1], childMode, first);
    } else {
        builder.Emit(Operation::kFail);  // an alternative that is not there
    }
    builder.At(commit).target = builder.Here();
}

// What is stored is decided by the sequence's own flags, not by who calls it.
void LayOutSequence(ProgramBuilder& builder, const GrammarNode& node, const Mode& mode,
                    bool first) {
    if (node.sequence.size() != 2) builder.EmitReport(kSequenceChildrenLine);
    LayOutPlainly(builder, node.sequence[0], builder.ChildMode(node, mode, 0), first);
    if (node.sequence.size() < 2) {
        builder.Emit(Operation::kFail);  // a part that is not there
        return;
    }
    LayOutPlainly(builder, node.sequence[1], builder.ChildMode(node, mode, 1), false);
    if ((node.flags & kAddEmpty) != 0) builder.Emit(Operation::kAddEmpty);
}

}  // namespace

void LayOutPlainly(ProgramBuilder& builder, const GrammarNode& node, const Mode& mode, bool first) {
    if (mode.append == Append::kYesButPerhapsEmpty) builder.Emit(Operation::kCheckJoin);
    switch (SortOf(builder.Tables(), node)) {
        case NodeSort::kLexem:
            return builder.EmitLexem(node, mode);
        case NodeSort::kRule:
            return builder.EmitCall(node.id, mode, first);
        case NodeSort::kChoice:
            return LayOutChoice(builder, node, mode, first);
        case NodeSort::kSequence:
            return LayOutSequence(builder, node, mode, first);
        case NodeSort::kNothing:
            builder.Emit(Operation::kFail);
    }
}

}  // namespace helpers::scripting
