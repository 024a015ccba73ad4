#include "helpers/scripting/ScriptCore.h"

#include <algorithm>
#include <new>
#include <utility>

namespace helpers::scripting {

Language::Language(Grammar grammar, std::wstring blanks)
    : grammar_(std::move(grammar)),
      blanks_(std::move(blanks)),
      program_(Compile(grammar_, blanks_)) {}

ScriptCore::ScriptCore(std::shared_ptr<const Language> language)
    : language_(std::move(language)), program_(&language_->Compiled()), matcher_(scanner_) {
    scanner_.Reset(text_, *program_);
}

void ScriptCore::TakeText(std::wstring text) {
    text_ = std::move(text);
    hasText_ = true;
    scanner_.Reset(text_, *program_);
}

Grammar& ScriptCore::OwnTables() {
    if (!own_) own_ = std::make_unique<Grammar>(language_->Tables());
    stale_ = true;
    return *own_;
}

void ScriptCore::MakeReady() {
    language_ = std::make_shared<const Language>(*own_, language_->Blanks());
    program_ = &language_->Compiled();
    scanner_.Reset(text_, *program_);
    stale_ = false;
}

bool ScriptCore::add_lexem(const LexemDefinition& definition) {
    return OwnTables().add_lexem(definition);
}

bool ScriptCore::AddRule(std::uint32_t number, const GrammarNode& node) {
    return OwnTables().add_rule(number, node);
}

bool ScriptCore::ReadLexem(std::uint32_t kind, LexemSpan& span) {
    const CompiledLexem* lexem = Ready().Lexem(kind);
    if (lexem == nullptr || position_ >= text_.size()) return false;
    const std::size_t first = scanner_.SkipBlanks(position_);
    if (first == scanner_.End()) return false;
    position_ = first;
    const LexemOutcome outcome = scanner_.Read(*lexem, first, span);
    if (outcome == LexemOutcome::kNoStop) position_ = kNoPosition;
    return outcome == LexemOutcome::kRead;
}

void ScriptCore::Take(std::uint32_t kind, const LexemSpan& span) {
    position_ = span.next;
    matcher_.SetLast({span.begin, span.begin + span.length, kind});
    lexemRead_ = true;
}

bool ScriptCore::get_lexem(std::uint32_t kind, std::wstring& text) {
    LexemSpan span;
    if (!ReadLexem(kind, span)) return false;
    try {
        text.assign(text_, span.begin, span.length);
    } catch (const std::bad_alloc&) {
        return false;
    }
    Take(kind, span);
    return true;
}

bool ScriptCore::get_lexem(std::uint32_t kind, std::wstring_view& text) {
    LexemSpan span;
    if (!ReadLexem(kind, span)) return false;
    text = std::wstring_view(text_).substr(span.begin, span.length);
    Take(kind, span);
    return true;
}

template <class Receive>
bool ScriptCore::MatchAndTake(std::uint32_t rule, Report report, Receive receive) {
    const Program& program = Ready();
    const Entry* entry = program.FindEntry(rule);
    std::size_t position = position_;
    if (entry == nullptr || !matcher_.Match(program, entry->address, position, 0, report)) {
        return false;
    }
    try {
        receive(matcher_.Recorded());
    } catch (const std::bad_alloc&) {
        return false;
    }
    position_ = position;
    return true;
}

bool ScriptCore::MatchRule(std::uint32_t rule, Pieces& out, Report report) {
    const bool matched =
        MatchAndTake(rule, report, [&](PieceRecorder& pieces) { pieces.MoveTo(out); });
    if (!matched) out.clear();
    return matched;
}

bool ScriptCore::MatchRule(std::uint32_t rule, std::vector<std::wstring>& out, Report report) {
    out.clear();
    const bool matched =
        MatchAndTake(rule, report, [&](PieceRecorder& pieces) { pieces.AppendTo(out); });
    if (!matched) out.clear();
    return matched;
}

bool ScriptCore::MatchNode(const GrammarNode& node, std::vector<std::wstring>& out, bool store,
                           bool append, Report report) {
    Ready();
    const std::shared_ptr<const Program> program =
        Compile(Tables(), Blanks(), LooseNode{&node, store, append});
    scanner_.Reset(text_, *program);
    std::size_t position = position_;
    const bool matched =
        matcher_.Match(*program, program->loose.address, position, out.size(), report);
    scanner_.Reset(text_, *program_);
    matcher_.Recorded().AppendTo(out);
    if (matched) position_ = position;
    return matched;
}

bool ScriptCore::FindRule(std::uint32_t rule, bool peek, Report report) {
    const Program& program = Ready();
    const Entry* entry = program.FindEntry(rule);
    return entry != nullptr && matcher_.Find(program, *entry, position_, peek, report);
}

}  // namespace helpers::scripting
