#pragma once

// Puts instructions, and the tables that they name, into a program. Used by the layouts, which
// decide what instructions a node becomes.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "helpers/scripting/GrammarAnalysis.h"
#include "helpers/scripting/Program.h"

namespace helpers::scripting {

// Whether a node's first piece goes to the end of the last string, and whether there surely is one.
enum class Append : std::uint8_t { kNo, kYes, kYesButPerhapsEmpty };

// How a node is matched: known before any text is there.
struct Mode {
    bool store = true;
    Append append = Append::kNo;

    auto operator<=>(const Mode&) const = default;  // NOLINT: no null pointer
};

// A rule is laid out once per mode in which it is called.
using RuleVariant = std::pair<std::uint32_t, Mode>;

// An instruction while the program is being laid out: addresses count drafts.
struct Draft {
    Instruction instruction;
    bool isJump = false;           // none in the end: is followed
    std::uint32_t target = kNone;  // where to go on instead of what follows
    const CompiledLexem* lexem = nullptr;
    const Keyword* keyword = nullptr;
    const CharacterSet* first = nullptr;
    const Draft* next = nullptr;
    const Draft* other = nullptr;
};

class ProgramBuilder {
public:
    ProgramBuilder(const Grammar& grammar, std::wstring_view blanks, Program& program);

    const Grammar& Tables() const { return grammar_; }
    const GrammarAnalysis& Analysis() const { return analysis_; }

    // The mode of a sequence's child, number 0 or 1.
    Mode ChildMode(const GrammarNode& sequence, const Mode& mode, std::size_t child) const;
    // The characters as a set, without the blanks: they stand before a lexem and never begin one.
    const CharacterSet& SetOf(std::wstring characters);
    bool IsBlank(wchar_t character) const { return program_.blanks.Has(character); }
    // Of a symbol that is marked as a lexem.
    const CompiledLexem& Lexem(std::uint32_t kind) const { return *program_.Lexem(kind); }

    std::uint32_t Here() const { return static_cast<std::uint32_t>(drafts_.size()); }
    Draft& At(std::uint32_t address) { return drafts_[address]; }
    Draft& Emit(Operation operation);
    void EmitReport(int line);
    void EmitLexem(const GrammarNode& node, const Mode& mode);
    // `first`: nothing was read since the rule that is laid out began.
    void EmitCall(std::uint32_t rule, const Mode& mode, bool first);

    // What follows belongs to this rule; kNone for none.
    void BeginRule(std::uint32_t rule) { rule_ = rule; }
    void BeginVariant(const RuleVariant& variant);
    // A called variant that is not laid out yet; false when there is none.
    bool NextVariant(RuleVariant& variant);
    // Once everything is laid out: makes the program of what can be reached from the addresses, and
    // answers where in it they are.
    std::vector<const Instruction*> Finish(const std::vector<std::uint32_t>& entries);

private:
    const Draft* Follow(std::uint32_t address) const;
    void MergeTest(Draft& test);
    static void TakeMark(Draft& lexem);
    std::vector<const Instruction*> Write(const std::vector<std::uint32_t>& entries);
    const Keyword& AddKeyword(std::wstring text, const CompiledLexem& lexem);

    const Grammar& grammar_;
    const GrammarAnalysis analysis_;
    const std::wstring blanks_;
    Program& program_;
    std::vector<Draft> drafts_;
    std::uint32_t rule_ = kNone;
    std::map<RuleVariant, std::uint32_t> variants_;
    std::vector<RuleVariant> pending_;
    std::vector<std::pair<std::uint32_t, RuleVariant>> calls_;
};

// A node as it stands: every node is tried, and reports, in its turn.
void LayOutPlainly(ProgramBuilder& builder, const GrammarNode& node, const Mode& mode,
                   bool first = true);

// For grammars that have nothing to report: small rules are laid out in place of their calls, and
// what neighbouring alternatives begin with in common is read once. Same matches, same pieces, same
// last lexem.
void LayOutFactored(ProgramBuilder& builder, const GrammarNode& node, const Mode& mode,
                    bool first = true);

}  // namespace helpers::scripting
