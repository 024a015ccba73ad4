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
            program_.loose = AddEntry(*loose.node, {loose.store, append});
        }
        RuleVariant variant;
        while (builder_.NextVariant(variant)) {
            builder_.BeginVariant(variant);
            LayOut(builder_.Tables().Rules()[variant.first], variant.second);
            builder_.Emit(Operation::kReturn);
        }
        builder_.Finish();
        for (Entry& entry : program_.entries) SetBegin(entry);
        SetBegin(program_.loose);
    }

private:
    void AddSymbols() {
        const Grammar& grammar = builder_.Tables();
        program_.entries.resize(grammar.SymbolCount());
        for (std::uint32_t symbol = 0; symbol < grammar.SymbolCount(); ++symbol) {
            if (grammar.Mark(symbol) == SymbolMark::kUndefined) continue;
            Entry& entry = program_.entries[symbol];
            entry = AddEntry(GrammarNode(symbol), {});
            entry.recursive = builder_.Analysis().ComesToRecursion(symbol);
            const CompiledLexem* lexem = program_.Lexem(symbol);
            if (lexem != nullptr && lexem->shape != LexemShape::kAny) entry.lexem = lexem;
        }
    }

    void SetBegin(Entry& entry) {
        if (entry.address != kNone) entry.begin = &builder_.At(entry.address);
    }

    Entry AddEntry(const GrammarNode& node, const Mode& mode) {
        Entry entry;
        entry.address = builder_.Here();
        const std::wstring first = builder_.Analysis().FirstCharacters(node);
        entry.first = builder_.SetOf(first);
        builder_.BeginRule(kNone);
        LayOut(node, mode);
        builder_.Emit(Operation::kMatched);
        if (!first.empty() && first.find_first_not_of(first[0]) == first.npos &&
            entry.first.Has(first[0])) {
            FindKeyword(entry, first[0]);
        }
        return entry;
    }

    // Looks for a keyword behind the first lexem.
    void FindKeyword(Entry& entry, wchar_t onlyFirst) {
        const Instruction& first = builder_.At(entry.address);
        const bool isLexem =
            first.operation == Operation::kWord || first.operation == Operation::kMark;
        if (!isLexem) return;
        const Instruction& second = builder_.At(entry.address + 1);
        if (second.operation != Operation::kKeyword) return;
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
};

}  // namespace

std::shared_ptr<const Program> Compile(const Grammar& grammar, std::wstring_view blanks,
                                       const LooseNode& loose) {
    auto program = std::make_shared<Program>();
    Compiler(grammar, blanks, *program).Run(loose);
    return program;
}

}  // namespace helpers::scripting
