#include "helpers/scripting/ProgramBuilder.h"

#include <algorithm>
#include <limits>

#include "helpers/scripting/AsciiCase.h"
#include "platform/CharacterCase.h"

namespace helpers::scripting {
namespace {

bool IsDisjoint(std::wstring_view characters, const CharacterSet& set) {
    return std::ranges::none_of(characters, [&](wchar_t c) { return set.Has(c); });
}

// No zero counts as the one certain character: one stands behind every text.
void FindShape(const LexemDefinition& definition, CompiledLexem& lexem) {
    if (!lexem.keepFirst || lexem.keepStop || lexem.skipStop || lexem.oneBeforeBlank) return;
    if (lexem.start.Has(L'\0')) return;
    if (IsDisjoint(definition.start_set, lexem.stop)) {
        if (definition.stop_set.size() == 1) lexem.onlyStop = definition.stop_set.front();
        lexem.shape = lexem.onlyStop != 0 ? LexemShape::kUntil : LexemShape::kWord;
    } else if (definition.start_set.size() == 1) {
        lexem.mark = definition.start_set.front();
        lexem.shape = LexemShape::kMark;
    }
}

void FillQuick(CompiledLexem& lexem) {
    for (std::size_t code = 0; code < lexem.quick.size(); ++code) {
        const auto character = static_cast<wchar_t>(code);
        if (lexem.start.Has(character)) lexem.quick[code] |= CompiledLexem::kStarts;
        if (code == 0 || lexem.stop.Has(character)) lexem.quick[code] |= CompiledLexem::kEnds;
    }
}

Operation OperationOf(LexemShape shape, bool hasKeyword) {
    switch (shape) {
        case LexemShape::kMark:
            return hasKeyword ? Operation::kLexem : Operation::kMark;
        case LexemShape::kUntil:
            return hasKeyword ? Operation::kLexem : Operation::kUntil;
        case LexemShape::kWord:
            return hasKeyword ? Operation::kKeyword : Operation::kWord;
        default:
            return Operation::kLexem;
    }
}

void AddLowBlanks(std::wstring_view blanks, Program& program) {
    for (const wchar_t blank : blanks) {
        const auto code = static_cast<std::uint32_t>(blank);
        if (code == 0 || code >= 64) {
            program.lowBlanks = 0;
            program.largestBlank = std::numeric_limits<std::uint32_t>::max();
            return;
        }
        program.lowBlanks |= std::uint64_t{1} << code;
        program.largestBlank = std::max(program.largestBlank, code);
    }
}

}  // namespace

ProgramBuilder::ProgramBuilder(const Grammar& grammar, std::wstring_view blanks, Program& program)
    : grammar_(grammar), analysis_(grammar), blanks_(blanks), program_(program) {
    program_.blanks = program_.sets.Add(blanks_);
    AddLowBlanks(blanks_, program_);
    program_.notBlanks = program_.sets.AddComplement(blanks_);
    program_.lexems.reserve(grammar_.Lexems().size());
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
        FindShape(definition, lexem);
        FillQuick(lexem);
        program_.lexemOfKind[kind] = static_cast<std::uint32_t>(program_.lexems.size());
        program_.lexems.push_back(lexem);
    }
}

Mode ProgramBuilder::ChildMode(const GrammarNode& sequence, const Mode& mode,
                               std::size_t child) const {
    const bool storeFirst = (sequence.flags & kDropFirst) == 0;
    if (child == 0) return {storeFirst, mode.append};
    const bool store = (sequence.flags & kDropSecond) == 0;
    if ((sequence.flags & kJoin) == 0) return {store, Append::kNo};
    const bool sure =
        mode.append == Append::kYes || analysis_.AlwaysStores(sequence.sequence[0], storeFirst);
    return {store, sure ? Append::kYes : Append::kYesButPerhapsEmpty};
}

const CharacterSet& ProgramBuilder::SetOf(std::wstring characters) {
    std::erase_if(characters, [&](wchar_t c) { return blanks_.find(c) != blanks_.npos; });
    return program_.sets.Add(characters);
}

Instruction& ProgramBuilder::Emit(Operation operation) {
    Instruction& instruction = program_.code.emplace_back();
    instruction.operation = operation;
    return instruction;
}

void ProgramBuilder::EmitReport(int line) {
    Emit(Operation::kReport).target = static_cast<std::uint32_t>(line);
}

void ProgramBuilder::EmitLexem(const GrammarNode& node, const Mode& mode) {
    const CompiledLexem& lexem = Lexem(node.id);
    Instruction& instruction = Emit(OperationOf(lexem.shape, !node.keyword.empty()));
    instruction.store = mode.store;
    instruction.append = mode.append != Append::kNo;
    instruction.lexem = &lexem;
    instruction.kind = lexem.kind;
    instruction.markKind = lexem.kind;
    instruction.mark = lexem.mark;
    if (!node.keyword.empty()) instruction.keyword = &AddKeyword(node.keyword);
}

void ProgramBuilder::EmitCall(std::uint32_t rule, const Mode& mode, bool first) {
    const RuleVariant variant{rule, mode};
    calls_.emplace_back(Here(), variant);
    Instruction& call = Emit(Operation::kCall);
    call.mayLoop = first && rule_ != kNone && (rule == rule_ || analysis_.ComesFirst(rule, rule_));
    call.remember = analysis_.IsRecursive(rule);
    if (call.mayLoop) program_.mayLoop = true;
    if (variants_.emplace(variant, kNone).second) pending_.push_back(variant);
}

void ProgramBuilder::BeginVariant(const RuleVariant& variant) {
    rule_ = variant.first;
    variants_[variant] = Here();
}

bool ProgramBuilder::NextVariant(RuleVariant& variant) {
    if (pending_.empty()) return false;
    variant = pending_.back();
    pending_.pop_back();
    return true;
}

void ProgramBuilder::Finish() {
    for (const auto& [address, variant] : calls_) At(address).target = variants_.at(variant);
    for (std::uint32_t address = 0; address < Here(); ++address) {
        Instruction& instruction = At(address);
        const bool leaves = instruction.operation == Operation::kCommit;
        instruction.next = Follow(leaves ? instruction.target : address + 1);
        const bool hasOther = !leaves && instruction.operation != Operation::kReport;
        if (hasOther && instruction.target != kNone) instruction.other = Follow(instruction.target);
    }
    for (Instruction& instruction : program_.code) {
        if (instruction.operation == Operation::kCall) {
            instruction.tail = instruction.next->operation == Operation::kReturn;
        }
        if (instruction.operation == Operation::kTest) MergeTest(instruction);
    }
    for (Instruction& instruction : program_.code) TakeMark(instruction);
}

// The instruction at the address, behind any jumps; null behind the last one.
const Instruction* ProgramBuilder::Follow(std::uint32_t address) {
    if (address == Here()) return nullptr;
    while (At(address).operation == Operation::kJump) address = At(address).target;
    return &At(address);
}

// A lexem tests for itself whether it begins here.
void ProgramBuilder::MergeTest(Instruction& test) {
    const Instruction& behind = *test.next;
    const bool isLexem =
        behind.operation == Operation::kMark || behind.operation == Operation::kWord ||
        behind.operation == Operation::kKeyword || behind.operation == Operation::kUntil;
    if (!isLexem) return;
    const std::wstring& start = grammar_.Lexems().at(behind.kind).start_set;
    if (SetOf(start).index != test.first->index) return;
    const Instruction* const other = test.other;
    test = behind;
    test.other = other;
}

// Makes the lexem and a mark that follows one instruction.
void ProgramBuilder::TakeMark(Instruction& lexem) {
    const bool isWord = lexem.operation == Operation::kWord;
    if (!isWord && lexem.operation != Operation::kUntil) return;
    const Instruction& mark = *lexem.next;
    if (mark.operation != Operation::kMark || mark.store || mark.other != nullptr) return;
    lexem.operation = isWord ? Operation::kWordMark : Operation::kUntilMark;
    lexem.mark = mark.mark;
    lexem.markKind = mark.markKind;
    lexem.next = mark.next;
}

const Keyword& ProgramBuilder::AddKeyword(std::wstring text) {
    platform::ToUpperCase(text.data(), text.find(L'\0') == text.npos ? text.size() : 0);
    const auto found = std::ranges::find(program_.keywords, text, &Keyword::text);
    if (found != program_.keywords.end()) return *found;
    const bool isPlain = std::ranges::all_of(text, [](wchar_t c) { return c != 0 && IsAscii(c); });
    return program_.keywords.emplace_back(Keyword{std::move(text), isPlain});
}

}  // namespace helpers::scripting
