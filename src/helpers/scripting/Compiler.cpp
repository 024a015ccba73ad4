// Lays a grammar's nodes out as instructions. Each rule is laid out once per way in which it is
// called: what is stored and what is appended is decided here, not while matching.

#include <algorithm>
#include <map>
#include <tuple>

#include "helpers/scripting/GrammarAnalysis.h"
#include "helpers/scripting/Program.h"
#include "platform/CharacterCase.h"

namespace helpers::scripting {
namespace {

enum class Append : std::uint8_t { kNo, kYes, kYesButPerhapsEmpty };

struct Mode {
    bool store;
    Append append;

    auto operator<=>(const Mode&) const = default;
};

class Compiler {
public:
    Compiler(const Grammar& grammar, std::wstring_view blanks, Program& program)
        : grammar_(grammar), analysis_(grammar), blanks_(blanks), program_(program) {}

    void Run(const LooseNode& loose) {
        program_.blanks = program_.sets.Add(blanks_);
        program_.notBlanks = program_.sets.AddComplement(blanks_);
        AddLexems();
        AddSymbols();
        if (loose.node != nullptr) {
            const Append append = loose.append ? Append::kYesButPerhapsEmpty : Append::kNo;
            program_.loose = AddEntry(*loose.node, {loose.store, append});
        }
        while (!pending_.empty()) {
            const auto [rule, mode] = pending_.back();
            pending_.pop_back();
            LayOutRule(rule, mode);
        }
        FinishCalls();
        if (program_.mayReport) TryEveryAlternative();
    }

private:
    using Variant = std::pair<std::uint32_t, Mode>;

    void AddLexems() {
        program_.lexemOfKind.assign(grammar_.SymbolCount(), kNone);
        for (const auto& [kind, definition] : grammar_.Lexems()) {
            CompiledLexem lexem;
            lexem.kind = kind;
            lexem.start = program_.sets.Add(definition.start_set);
            lexem.stop = program_.sets.Add(definition.stop_set);
            lexem.keepFirst = definition.keep_first;
            lexem.keepStop = definition.keep_stop;
            lexem.skipStop = definition.skip_stop;
            lexem.oneBeforeBlank = lexem.stop.index == program_.blanks.index;
            program_.lexemOfKind[kind] = static_cast<std::uint32_t>(program_.lexems.size());
            program_.lexems.push_back(lexem);
        }
    }

    void FinishCalls() {
        for (const auto& [address, variant] : calls_) {
            Instruction& call = program_.code[address];
            call.target = variants_.at(variant);
            call.tail = program_.code[address + 1].operation == Operation::kReturn;
        }
    }

    // An alternative that cannot match may still have something to report.
    void TryEveryAlternative() {
        for (Instruction& instruction : program_.code) instruction.first = {};
    }

    void AddSymbols() {
        program_.entryOfSymbol.assign(grammar_.SymbolCount(), kNone);
        for (std::uint32_t symbol = 0; symbol < grammar_.SymbolCount(); ++symbol) {
            if (grammar_.Mark(symbol) == SymbolMark::kUndefined) continue;
            program_.entryOfSymbol[symbol] = static_cast<std::uint32_t>(program_.entries.size());
            program_.entries.push_back(AddEntry(GrammarNode(symbol), {true, Append::kNo}));
        }
    }

    Entry AddEntry(const GrammarNode& node, const Mode& mode) {
        Entry entry;
        entry.address = Here();
        std::wstring first = analysis_.FirstCharacters(node);
        // A match begins behind blanks, so a blank never begins one.
        std::erase_if(first, [&](wchar_t c) { return blanks_.find(c) != blanks_.npos; });
        entry.first = program_.sets.Add(first);
        if (!first.empty() && first.find_first_not_of(first[0]) == first.npos) {
            entry.onlyFirst = first[0];
        }
        entry.recursive = node.id < grammar_.SymbolCount() && analysis_.ComesToRecursion(node.id);
        currentRule_ = kNone;
        LayOut(node, mode);
        Emit(Operation::kMatched);
        return entry;
    }

    void LayOutRule(std::uint32_t rule, const Mode& mode) {
        currentRule_ = rule;
        variants_[{rule, mode}] = Here();
        LayOut(grammar_.Rules()[rule], mode);
        Emit(Operation::kReturn);
    }

    void LayOut(const GrammarNode& node, const Mode& mode, bool first = true) {
        if (mode.append == Append::kYesButPerhapsEmpty) {
            Emit(Operation::kCheckJoin);
            program_.mayReport = true;
        }
        switch (SortOf(grammar_, node)) {
            case NodeSort::kLexem:
                return LayOutLexem(node, mode);
            case NodeSort::kRule:
                return LayOutCall(node.id, mode, first);
            case NodeSort::kChoice:
                return LayOutChoice(node, mode, first);
            case NodeSort::kSequence:
                return LayOutSequence(node, mode, first);
            case NodeSort::kNothing:
                Emit(Operation::kFail);
        }
    }

    void LayOutLexem(const GrammarNode& node, const Mode& mode) {
        Instruction& instruction = Emit(Operation::kLexem);
        instruction.store = mode.store;
        instruction.append = mode.append != Append::kNo;
        instruction.lexem = program_.lexemOfKind[node.id];
        if (!node.keyword.empty()) instruction.keyword = AddKeyword(node.keyword);
    }

    void LayOutCall(std::uint32_t rule, const Mode& mode, bool first) {
        const Variant variant{rule, mode};
        calls_.emplace_back(Here(), variant);
        Instruction& instruction = Emit(Operation::kCall);
        instruction.mayLoop = first && currentRule_ != kNone &&
                              (rule == currentRule_ || analysis_.ComesFirst(rule, currentRule_));
        instruction.remember = analysis_.IsRecursive(rule);
        if (instruction.mayLoop) program_.mayLoop = true;
        if (variants_.emplace(variant, kNone).second) pending_.push_back(variant);
    }

    // Choices store, whatever they are told; what to append to passes to both alternatives.
    void LayOutChoice(const GrammarNode& node, const Mode& mode, bool first) {
        if (node.choice.size() != 2) EmitReport(kChoiceChildrenLine);
        const Mode childMode{true, mode.append};
        const std::uint32_t choice = Here();
        Emit(Operation::kChoice).first =
            program_.sets.Add(analysis_.FirstCharacters(node.choice[0]));
        LayOut(node.choice[0], childMode, first);
        const std::uint32_t commit = Here();
        Emit(Operation::kCommit);
        program_.code[choice].target = Here();
        if (node.choice.size() > 1) {
            LayOut(node.choice[1], childMode, first);
        } else {
            Emit(Operation::kFail);  // an alternative that is not there
        }
        program_.code[commit].target = Here();
    }

    // What is stored is decided by the sequence's own flags, not by who calls it.
    void LayOutSequence(const GrammarNode& node, const Mode& mode, bool first) {
        if (node.sequence.size() != 2) EmitReport(kSequenceChildrenLine);
        const bool storeFirst = (node.flags & kDropFirst) == 0;
        LayOut(node.sequence[0], {storeFirst, mode.append}, first);
        if (node.sequence.size() < 2) {
            Emit(Operation::kFail);  // a part that is not there
            return;
        }
        Mode second{(node.flags & kDropSecond) == 0, Append::kNo};
        if ((node.flags & kJoin) != 0) {
            const bool sure =
                mode.append == Append::kYes || analysis_.AlwaysStores(node.sequence[0], storeFirst);
            second.append = sure ? Append::kYes : Append::kYesButPerhapsEmpty;
        }
        LayOut(node.sequence[1], second, false);
        if ((node.flags & kAddEmpty) != 0) Emit(Operation::kAddEmpty);
    }

    std::uint32_t AddKeyword(std::wstring text) {
        platform::ToUpperCase(text.data(), text.find(L'\0') == text.npos ? text.size() : 0);
        const auto found = std::find(program_.keywords.begin(), program_.keywords.end(), text);
        const auto index = static_cast<std::uint32_t>(found - program_.keywords.begin());
        if (found == program_.keywords.end()) program_.keywords.push_back(std::move(text));
        return index;
    }

    std::uint32_t Here() const { return static_cast<std::uint32_t>(program_.code.size()); }

    Instruction& Emit(Operation operation) {
        Instruction& instruction = program_.code.emplace_back();
        instruction.operation = operation;
        return instruction;
    }

    void EmitReport(int line) {
        Emit(Operation::kReport).target = static_cast<std::uint32_t>(line);
        program_.mayReport = true;
    }

    const Grammar& grammar_;
    const GrammarAnalysis analysis_;
    const std::wstring_view blanks_;
    Program& program_;
    std::uint32_t currentRule_ = kNone;
    std::map<Variant, std::uint32_t> variants_;
    std::vector<Variant> pending_;
    std::vector<std::pair<std::uint32_t, Variant>> calls_;
};

}  // namespace

std::shared_ptr<const Program> Compile(const Grammar& grammar, std::wstring_view blanks,
                                       const LooseNode& loose) {
    auto program = std::make_shared<Program>();
    Compiler(grammar, blanks, *program).Run(loose);
    return program;
}

}  // namespace helpers::scripting
