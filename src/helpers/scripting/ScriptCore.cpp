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
    : language_(std::move(language)), program_(&language_->Compiled()) {
    matcher_.Scanner().Reset(text_, *program_);
}

void ScriptCore::TakeText(std::wstring text) {
    text_ = std::move(text);
    hasText_ = true;
    matcher_.Scanner().Reset(text_, *program_);
}

Grammar& ScriptCore::OwnTables() {
    if (!own_) own_ = std::make_unique<Grammar>(language_->Tables());
    stale_ = true;
    return *own_;
}

void ScriptCore::MakeReady() {
    language_ = std::make_shared<const Language>(*own_, language_->Blanks());
    program_ = &language_->Compiled();
    matcher_.Scanner().Reset(text_, *program_);
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
    const std::size_t first = matcher_.Scanner().SkipBlanks(position_);
    if (first == matcher_.Scanner().End()) return false;
    position_ = first;
    const LexemOutcome outcome = matcher_.Scanner().Read(*lexem, first, span);
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

bool ScriptCore::MatchRule(std::uint32_t rule, Pieces& out, Report report) {
    const Program& program = Ready();
    const Entry* entry = program.FindEntry(rule);
    if (entry != nullptr && entry->lexem != nullptr) {
        return matcher_.MatchLexem(*entry->lexem, position_, out);
    }
    std::size_t position = position_;
    if (entry == nullptr || !matcher_.Match(*entry, position, out, 0, report)) {
        out.clear();
        return false;
    }
    matcher_.Recorded().Finish(out);
    position_ = position;
    return true;
}

bool ScriptCore::MatchRule(std::uint32_t rule, std::vector<std::wstring>& out, Report report) {
    out.clear();
    const std::size_t before = position_;
    try {
        Pieces pieces;
        if (!MatchRule(rule, pieces, report)) return false;
        out.assign(pieces.begin(), pieces.end());
        return true;
    } catch (const std::bad_alloc&) {
        out.clear();
        position_ = before;
        return false;
    }
}

bool ScriptCore::MatchNode(const GrammarNode& node, std::vector<std::wstring>& out, bool store,
                           bool append, Report report) {
    const std::size_t before = out.size();
    bool matched = false;
    try {
        Ready();
        const std::shared_ptr<const Program> program =
            Compile(Tables(), Blanks(), LooseNode{&node, store, append});
        matcher_.Scanner().Reset(text_, *program);
        std::size_t position = position_;
        Pieces pieces;
        matched = matcher_.Match(program->loose, position, pieces, before, report);
        matcher_.Recorded().AppendTo(out);
        if (matched) position_ = position;
    } catch (const std::bad_alloc&) {
        matched = false;
        out.resize(before);
    }
    matcher_.Scanner().Reset(text_, *program_);  // the other program is gone
    return matched;
}

bool ScriptCore::FindRule(std::uint32_t rule, bool peek, Report report) {
    const Program& program = Ready();
    const Entry* entry = program.FindEntry(rule);
    return entry != nullptr && matcher_.Find(program, *entry, position_, peek, report);
}

}  // namespace helpers::scripting
