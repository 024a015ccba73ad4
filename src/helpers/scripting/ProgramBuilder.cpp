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
        if (code == 0) {
            lexem.quick[code] |= CompiledLexem::kEnds;
        } else if (lexem.stop.Has(character)) {
            lexem.quick[code] |= CompiledLexem::kEnds | CompiledLexem::kStops;
        }
    }
}

Operation OperationOf(LexemShape shape, bool hasKeyword) {
    switch (shape) {
        case LexemShape::kMark:
            return hasKeyword ? Operation::kLexemWord : Operation::kMark;
        case LexemShape::kUntil:
            return hasKeyword ? Operation::kLexemWord : Operation::kUntil;
        case LexemShape::kWord:
            return hasKeyword ? Operation::kKeyword : Operation::kWord;
        default:
            return hasKeyword ? Operation::kLexemWord : Operation::kLexem;
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

Draft& ProgramBuilder::Emit(Operation operation) {
    Draft& draft = drafts_.emplace_back();
    draft.instruction.operation = operation;
    return draft;
}

void ProgramBuilder::EmitReport(int line) {
    Emit(Operation::kReport).instruction.number = static_cast<std::uint32_t>(line);
}

void ProgramBuilder::EmitLexem(const GrammarNode& node, const Mode& mode) {
    const CompiledLexem& lexem = Lexem(node.id);
    Draft& draft = Emit(OperationOf(lexem.shape, !node.keyword.empty()));
    draft.instruction.store = mode.store;
    draft.instruction.append = mode.append != Append::kNo;
    draft.instruction.number = lexem.kind;
    draft.instruction.markKind = lexem.kind;
    draft.instruction.mark = lexem.mark;
    draft.lexem = &lexem;
    if (!node.keyword.empty()) draft.keyword = &AddKeyword(node.keyword, lexem);
}

void ProgramBuilder::EmitCall(std::uint32_t rule, const Mode& mode, bool first) {
    const RuleVariant variant{rule, mode};
    calls_.emplace_back(Here(), variant);
    Instruction& call = Emit(Operation::kCall).instruction;
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

std::vector<const Instruction*> ProgramBuilder::Finish(const std::vector<std::uint32_t>& entries) {
    for (const auto& [address, variant] : calls_) {
        At(address).target = At(address).instruction.number = variants_.at(variant);
    }
    for (std::uint32_t address = 0; address < Here(); ++address) {
        Draft& draft = At(address);
        const Operation operation = draft.instruction.operation;
        const bool leaves = operation == Operation::kCommit;
        const bool ends = operation == Operation::kReturn || operation == Operation::kMatched ||
                          operation == Operation::kFail;
        if (!ends) draft.next = Follow(leaves ? draft.target : address + 1);
        if (!leaves && draft.target != kNone) draft.other = Follow(draft.target);
    }
    for (Draft& draft : drafts_) {
        if (draft.instruction.operation == Operation::kCall) {
            draft.instruction.tail = draft.next->instruction.operation == Operation::kReturn;
        }
        if (draft.instruction.operation == Operation::kTest) MergeTest(draft);
    }
    for (Draft& draft : drafts_) TakeMark(draft);
    return Write(entries);
}

// The draft at the address, behind any jumps; null behind the last one.
const Draft* ProgramBuilder::Follow(std::uint32_t address) const {
    while (address != Here() && drafts_[address].isJump) address = drafts_[address].target;
    return address != Here() ? &drafts_[address] : nullptr;
}

// A lexem tests for itself whether it begins here.
void ProgramBuilder::MergeTest(Draft& test) {
    const Draft& behind = *test.next;
    const Operation operation = behind.instruction.operation;
    const bool isLexem = operation == Operation::kMark || operation == Operation::kWord ||
                         operation == Operation::kKeyword || operation == Operation::kUntil;
    if (!isLexem) return;
    const std::wstring& start = grammar_.Lexems().at(behind.instruction.number).start_set;
    if (SetOf(start).index != test.first->index) return;
    const Draft* const other = test.other;
    test = behind;
    test.other = other;
}

// Makes the lexem and a mark that follows one instruction.
void ProgramBuilder::TakeMark(Draft& lexem) {
    const bool isWord = lexem.instruction.operation == Operation::kWord;
    if (!isWord && lexem.instruction.operation != Operation::kUntil) return;
    const Draft& mark = *lexem.next;
    if (mark.instruction.operation != Operation::kMark || mark.instruction.store) return;
    if (mark.other != nullptr) return;
    lexem.instruction.operation = isWord ? Operation::kWordMark : Operation::kUntilMark;
    lexem.instruction.mark = mark.instruction.mark;
    lexem.instruction.markKind = mark.instruction.markKind;
    lexem.next = mark.next;
}

// What can be reached goes into the program, and what follows in a text, next to each other.
std::vector<const Instruction*> ProgramBuilder::Write(const std::vector<std::uint32_t>& entries) {
    constexpr std::uint32_t kNowhere = kNone;
    std::vector<std::uint32_t> places(drafts_.size(), kNowhere);
    std::vector<const Draft*> written;
    const auto place = [&](const Draft* draft) -> std::uint32_t& {
        return places[static_cast<std::size_t>(draft - drafts_.data())];
    };
    std::vector<const Draft*> pending;
    for (const std::uint32_t entry : entries) {
        pending.push_back(Follow(entry));
        while (!pending.empty()) {
            const Draft* draft = pending.back();
            pending.pop_back();
            for (; draft != nullptr && place(draft) == kNowhere; draft = draft->next) {
                place(draft) = static_cast<std::uint32_t>(written.size());
                written.push_back(draft);
                if (draft->other != nullptr) pending.push_back(draft->other);
            }
        }
    }
    program_.code.resize(written.size());
    const auto instructionOf = [&](const Draft* draft) {
        return draft != nullptr ? &program_.code[place(draft)] : nullptr;
    };
    for (const Draft* draft : written) {
        Instruction& instruction = *instructionOf(draft);
        instruction = draft->instruction;
        instruction.next = instructionOf(draft->next);
        instruction.other = instructionOf(draft->other);
        if (draft->keyword != nullptr) {
            instruction.keyword = draft->keyword;
        } else if (draft->lexem != nullptr) {
            instruction.lexem = draft->lexem;
        } else {
            instruction.first = draft->first;
        }
    }
    std::vector<const Instruction*> begins;
    begins.reserve(entries.size());
    for (const std::uint32_t entry : entries) {
        begins.push_back(instructionOf(Follow(entry)));
    }
    return begins;
}

const Keyword& ProgramBuilder::AddKeyword(std::wstring text, const CompiledLexem& lexem) {
    platform::ToUpperCase(text.data(), text.find(L'\0') == text.npos ? text.size() : 0);
    for (const Keyword& keyword : program_.keywords) {
        if (keyword.text == text && keyword.lexem == &lexem) return keyword;
    }
    const bool isPlain = std::ranges::all_of(text, [](wchar_t c) { return c != 0 && IsAscii(c); });
    return program_.keywords.emplace_back(Keyword{std::move(text), isPlain, &lexem});
}

}  // namespace helpers::scripting
