#pragma once

// A grammar as the matcher runs it: a flat list of instructions. Never changes once compiled; any
// thread.

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "helpers/scripting/CharacterSet.h"
#include "helpers/scripting/Grammar.h"

namespace helpers::scripting {

// What makes lexems easy to read. All but kAny keep their characters from the first one to before
// the stop, go on with the stop, and do not begin with a zero.
enum class LexemShape : std::uint8_t {
    kMark,   // one certain character, which ends itself: the lexem is that character
    kUntil,  // ends at one certain character, which is none that it may begin with
    kWord,   // ends at one of several characters, which are none that it may begin with
    kAny,
};

// A lexem definition with its sets looked up.
struct CompiledLexem {
    std::uint32_t kind = 0;
    CharacterSet start;
    CharacterSet stop;
    bool keepFirst = true;
    bool keepStop = false;
    bool skipStop = false;
    // The stop set is exactly the blank set: the lexem is one character, and a blank must follow.
    bool oneBeforeBlank = false;
    LexemShape shape = LexemShape::kAny;
    wchar_t mark = 0;      // when it is a mark, the mark
    wchar_t onlyStop = 0;  // when it goes until a certain character, that one
    // The two sets for characters below 256: kStarts, and kEnds for the stop set and the zero that
    // stands behind every text.
    std::array<std::uint8_t, 256> quick{};
    static constexpr std::uint8_t kStarts = 1;
    static constexpr std::uint8_t kEnds = 2;
    static constexpr std::uint8_t kStops = 4;  // in the stop set, and no zero
};

// A lexem that must say a certain word.
struct Keyword {
    std::wstring text;  // upper case
    bool isPlain;       // all of it ASCII, and no zero
    const CompiledLexem* lexem;
};

enum class Operation : std::uint8_t {
    kMark,       // read a lexem that is one certain character, store it
    kWord,       // read a lexem of the shape of a word, store it
    kKeyword,    // the same, if it equals the keyword
    kUntil,      // read a lexem that one certain character ends, store it
    kWordMark,   // read a word, store it, and read the mark behind it
    kUntilMark,  // the same for the other shape
    kLexem,      // read any lexem, store it
    kLexemWord,  // the same, if it equals the keyword
    kCall,       // match the rule at `other`
    kReturn,     // a rule has matched
    kTest,       // match if a character of `first` stands here
    kChoice,     // the same; on a failure further on, go on at `other` from here
    kCommit,     // drop the last choice
    kFail,       // no match here
    kAddEmpty,   // store an empty string
    kCheckJoin,  // report an append without anything to append to
    kReport,     // report the line: a node has the wrong number of children
    kMatched,    // the end
};

constexpr std::uint32_t kNone = 0xFFFFFFFF;

// What matches goes on at `next`. What does not, reads nothing and goes on at `other`, or where
// there is none, back at the last open choice. Small, since a text is matched by many of them.
struct Instruction {
    Operation operation = Operation::kFail;
    bool store : 1 = false;
    bool append : 1 = false;
    bool mayLoop : 1 = false;   // a call that can come back here without having read anything
    bool remember : 1 = false;  // a call of a recursive rule: a search remembers what it came to
    bool tail : 1 = false;      // a call with nothing behind it in its rule
    bool rereads : 1 = false;   // a choice whose second alternative begins with what was read
                                // before it
    wchar_t mark = 0;
    // The lexem's kind; of a call, what tells the rule in that mode from others; of a report the
    // line.
    std::uint32_t number = 0;
    std::uint32_t markKind = 0;  // of the mark
    union {
        const CompiledLexem* lexem = nullptr;  // to read, but where it must say a word
        const Keyword* keyword;                // of kKeyword and kLexemWord
        const CharacterSet* first;  // of kTest and kChoice: what goes on here may begin with; null
                                    // for anything
    };
    const Instruction* next = nullptr;
    const Instruction* other = nullptr;
};

// Where matching a symbol begins, and the characters that any match of it begins with.
struct Entry {
    const Instruction* begin = nullptr;  // null for what nothing matches
    CharacterSet first;
    // For a lexem that begins with one certain character, and then a keyword: that lexem, its first
    // character, and the upper-case ASCII character that the keyword begins with.
    const CompiledLexem* beforeKeyword = nullptr;
    wchar_t onlyFirst = 0;
    wchar_t keywordFirst = 0;
    bool recursive = false;                // matching it may come to a rule inside that rule
    const CompiledLexem* lexem = nullptr;  // the whole of it, when it is a lexem of a certain shape
};

// Stays where it is: instructions point into its lists, and entries to instructions.
struct Program {
    CharacterSets sets;
    CharacterSet blanks;
    CharacterSet notBlanks;
    // The blanks, one bit each, and the largest one's code, when all are among the first 64
    // characters and none is zero. Otherwise no bit, and a code as large as any.
    std::uint64_t lowBlanks = 0;
    std::uint32_t largestBlank = 0;
    std::vector<CompiledLexem> lexems;
    std::vector<std::uint32_t> lexemOfKind;  // by symbol; kNone for no lexem
    std::deque<Keyword> keywords;
    std::vector<Instruction> code;
    std::vector<Entry> entries;  // by symbol
    Entry loose;                 // of the loose node, when one was compiled
    bool mayReport = false;      // some match may report an inconsistency
    bool mayLoop = false;        // some rule may call itself before it reads

    const CompiledLexem* Lexem(std::uint32_t kind) const {
        if (kind >= lexemOfKind.size() || lexemOfKind[kind] == kNone) return nullptr;
        return &lexems[lexemOfKind[kind]];
    }
    const Entry* FindEntry(std::uint32_t symbol) const {
        if (symbol >= lexemOfKind.size() || entries[symbol].begin == nullptr) return nullptr;
        return &entries[symbol];
    }
};

// How a node outside the rule table is to be matched.
struct LooseNode {
    const GrammarNode* node = nullptr;
    bool store = true;
    bool append = false;
};

std::shared_ptr<const Program> Compile(const Grammar& grammar, std::wstring_view blanks,
                                       const LooseNode& loose = {});

// Lines that searching people know, in the file that they know them by.
constexpr int kJoinWithoutPieceLine = 94;
constexpr int kChoiceChildrenLine = 165;
constexpr int kSequenceChildrenLine = 182;

}  // namespace helpers::scripting
