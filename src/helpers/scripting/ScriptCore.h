#pragma once

// What Script and Interpreter do that does not depend on their parameters: the text, the position
// in it, the language's tables, and matching. For one thread at a time.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "helpers/scripting/Grammar.h"
#include "helpers/scripting/Matcher.h"
#include "helpers/scripting/Pieces.h"

namespace helpers::scripting {

// A language's tables, made ready for matching: shared by all interpreters that never change them.
class Language {
public:
    Language(Grammar grammar, std::wstring blanks);

    const Grammar& Tables() const { return grammar_; }
    const std::wstring& Blanks() const { return blanks_; }
    const Program& Compiled() const { return *program_; }

private:
    Grammar grammar_;
    std::wstring blanks_;
    std::shared_ptr<const Program> program_;
};

class ScriptCore {
public:
    virtual ~ScriptCore() = default;
    ScriptCore(const ScriptCore&) = delete;
    ScriptCore& operator=(const ScriptCore&) = delete;

    bool has_text() const { return hasText_; }
    // The cleaned text and the zero that ends it; empty without a text. Never changes.
    const std::wstring& Text() const { return text_; }
    const std::wstring& Blanks() const { return language_->Blanks(); }
    const Grammar& Tables() const { return own_ ? *own_ : language_->Tables(); }

    // The character that is read next. Any value may be set; from the text's end on, and at
    // kNoPosition, every read fails.
    std::size_t Position() const { return position_; }
    void SetPosition(std::size_t position) { position_ = position; }

    // Defines a lexem kind; false, and nothing changed, when the number is taken.
    bool add_lexem(const LexemDefinition& definition);
    // Reads one lexem of the kind behind any blanks. A failure leaves `text` alone, but may leave
    // the position behind the blanks, or at kNoPosition when the lexem never ends. A lack of memory
    // is a failure too.
    bool get_lexem(std::uint32_t kind, std::wstring& text);
    // The same, as a view into the text.
    bool get_lexem(std::uint32_t kind, std::wstring_view& text);

    // The last lexem that was read, by failed matches too.
    std::uint32_t LastLexemKind() const { return matcher_.Last().kind; }
    std::wstring_view LastLexemText() const {
        const LastLexem& last = matcher_.Last();
        return std::wstring_view(text_).substr(last.begin, last.end - last.begin);
    }
    // Set by every lexem that is read, and from the start.
    bool LexemRead() const { return lexemRead_; }

protected:
    using Report = Matcher::Report;

    ScriptCore(std::shared_ptr<const Language> language);

    void TakeText(std::wstring text);
    bool AddRule(std::uint32_t number, const GrammarNode& node);
    bool MatchRule(std::uint32_t rule, Pieces& out, Report report);
    bool MatchRule(std::uint32_t rule, std::vector<std::wstring>& out, Report report);
    bool MatchNode(const GrammarNode& node, std::vector<std::wstring>& out, bool store, bool append,
                   Report report);
    bool FindRule(std::uint32_t rule, bool peek, Report report);

private:
    Grammar& OwnTables();
    const Program& Ready() {
        if (stale_) MakeReady();
        return *program_;
    }
    void MakeReady();
    bool ReadLexem(std::uint32_t kind, LexemSpan& span);
    void Take(std::uint32_t kind, const LexemSpan& span);

    std::wstring text_;
    bool hasText_ = false;
    std::size_t position_ = 0;
    bool lexemRead_ = true;
    std::shared_ptr<const Language> language_;
    const Program* program_;        // the language's
    std::unique_ptr<Grammar> own_;  // the tables once they differ from the shared language's
    bool stale_ = false;            // they were not made ready since the last change
    Matcher matcher_;
};

}  // namespace helpers::scripting
