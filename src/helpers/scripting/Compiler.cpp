// Lays a grammar out as a program: an entry for each symbol, and each rule once per mode in which
// it is called.

#include "helpers/scripting/ProgramBuilder.h"

namespace helpers::scripting {
namespace {

class Compiler {
public:
    Compiler(const Grammar& grammar, std::wstring_view blanks, Program& program)
        : builder_(grammar, blanks, program), program_(program) {}

    void Run(const LooseNode& loose) {
        const GrammarAnalysis& analysis = builder_.Analysis();
        program_.mayReport =
            analysis.MayReport() ||
            (loose.node != nullptr && (loose.append || analysis.MayReport(*loose.node)));
        AddSymbols();
        if (loose.node != nullptr) {
            const Append append = loose.append ? Append::kYesButPerhapsEmpty : Append::kNo;
            AddEntry(program_.loose, *loose.node, {loose.store, append});
        }
        RuleVariant variant;
        while (builder_.NextVariant(variant)) {
            builder_.BeginVariant(variant);
            LayOut(builder_.Tables().Rules()[variant.first], variant.second);
            builder_.Emit(Operation::kReturn);
        }
        const std::vector<const Instruction*> begins = builder_.Finish(addresses_);
        for (std::size_t i = 0; i < begins.size(); ++i) entries_[i]->begin = begins[i];
    }

private:
    void AddSymbols() {
        const Grammar& grammar = builder_.Tables();
        program_.entries.resize(grammar.SymbolCount());
        for (std::uint32_t symbol = 0; symbol < grammar.SymbolCount(); ++symbol) {
            if (grammar.Mark(symbol) == SymbolMark::kUndefined) continue;
            Entry& entry = program_.entries[symbol];
            AddEntry(entry, GrammarNode(symbol), {});
            entry.recursive = builder_.Analysis().ComesToRecursion(symbol);
            const CompiledLexem* lexem = program_.Lexem(symbol);
            if (lexem != nullptr && lexem->shape != LexemShape::kAny) entry.lexem = lexem;
        }
    }

    void AddEntry(Entry& entry, const GrammarNode& node, const Mode& mode) {
        const std::uint32_t address = builder_.Here();
        addresses_.push_back(address);
        entries_.push_back(&entry);
        const std::wstring first = builder_.Analysis().FirstCharacters(node);
        entry.first = builder_.SetOf(first);
        builder_.BeginRule(kNone);
        LayOut(node, mode);
        builder_.Emit(Operation::kMatched);
        if (!first.empty() && first.find_first_not_of(first[0]) == first.npos &&
            entry.first.Has(first[0])) {
            FindKeyword(entry, address, first[0]);
        }
    }

    // Looks for a keyword behind the first lexem.
    void FindKeyword(Entry& entry, std::uint32_t address, wchar_t onlyFirst) {
        const Draft& first = builder_.At(address);
        const Operation operation = first.instruction.operation;
        if (operation != Operation::kWord && operation != Operation::kMark) return;
        const Draft& second = builder_.At(address + 1);
        if (second.instruction.operation != Operation::kKeyword) return;
        const wchar_t character = second.keyword->text.front();
        if (character == 0 || (character & ~0x7F) != 0) return;
        entry.beforeKeyword = first.lexem;
        entry.onlyFirst = onlyFirst;
        entry.keywordFirst = character;
    }

    void LayOut(const GrammarNode& node, const Mode& mode) {
        if (program_.mayReport) {
            LayOutPlainly(builder_, node, mode);
        } else {
            LayOutFactored(builder_, node, mode);
        }
    }

    ProgramBuilder builder_;
    Program& program_;
    std::vector<std::uint32_t> addresses_;  // of the entries below
    std::vector<Entry*> entries_;
};

}  // namespace

std::shared_ptr<const Program> Compile(const Grammar& grammar, std::wstring_view blanks,
                                       const LooseNode& loose) {
    auto program = std::make_shared<Program>();
    Compiler(grammar, blanks, *program).Run(loose);
    return program;
}

}  // namespace helpers::scripting
