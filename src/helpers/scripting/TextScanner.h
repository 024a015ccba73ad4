#pragma once

// Looks characters and lexems up in a text that stays as it is. Whatever the text, asking again and
// again costs a bounded number of steps: long runs without a stop character are remembered. Not for
// several threads at once.

#include <algorithm>
#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

#include "helpers/scripting/Program.h"

namespace helpers::scripting {

constexpr std::size_t kNoPosition = static_cast<std::size_t>(-1);

struct LexemSpan {
    std::size_t begin = 0;
    std::size_t length = 0;
    std::size_t next = 0;  // the position behind the lexem; may lie behind the text's end
};

enum class LexemOutcome { kRead, kWrongStart, kNoStop };

class TextScanner {
public:
    // The text and the program must stay while the scanner works on them.
    void Reset(std::wstring_view text, const Program& program) {
        text_ = text.data();
        size_ = text.size();
        blanks_ = program.blanks;
        largestBlank_ = program.largestBlank;
        notBlanks_ = &program.notBlanks;
        setCount_ = program.sets.Count();
        onlyFirst_.clear();
        onlyFirstOf_ = 0;
        nextOnlyFirst_ = 0;
        runs_.clear();
    }

    std::wstring_view Text() const { return {text_, size_}; }
    // Where a zero stands, behind the text.
    std::size_t End() const { return size_; }

    // The first character from `from` on that is no blank; the text's end for none. For `from` up
    // to the text's end, where a zero stands.
    std::size_t SkipBlanks(std::size_t from) {
        // Most characters are larger than any blank, and most blanks stand alone.
        if (CodeOf(text_[from]) > largestBlank_) return from;
        if (from < size_ && CodeOf(text_[from + 1]) > largestBlank_ && blanks_.Has(text_[from])) {
            return from + 1;
        }
        return SkipSome(from);
    }

    // The first character of the set from `from` on; kNoPosition for none.
    std::size_t Find(const CharacterSet& set, std::size_t from) {
        std::size_t at = from;
        if (from + kShort <= size_) {
            for (; at != from + kShort; at += 4) {
                if (set.Has(text_[at])) return at;
                if (set.Has(text_[at + 1])) return at + 1;
                if (set.Has(text_[at + 2])) return at + 2;
                if (set.Has(text_[at + 3])) return at + 3;
            }
        }
        return FindBeyond(set, from, at);
    }

    // The first character from `from` on that the entry's matches may begin with; kNoPosition for
    // none.
    std::size_t FindCandidate(const Entry& entry, std::size_t from);

    // Where a lexem ends that begins with the character at `first`; for plain lexems. kNoPosition
    // when it does not begin so, or never ends.
    std::size_t FindEnd(const CompiledLexem& lexem, std::size_t first) {
        if (!lexem.start.Has(text_[first])) return kNoPosition;
        if (lexem.mayStopAtOnce) return FindEndFrom(lexem, first);
        return lexem.onlyStop != 0 ? FindOnly(lexem, first + 1) : Find(lexem.stop, first + 1);
    }
    // Reads any lexem that begins there.
    LexemOutcome Read(const CompiledLexem& lexem, std::size_t first, LexemSpan& span);

private:
    // Stretches of text without a character of some set, by where they end (kNoPosition for the
    // end of the text), with where they begin.
    struct Runs {
        std::map<std::size_t, std::size_t> beginByEnd;
        std::size_t lastBegin = 1;  // the run that was asked for last
        std::size_t lastEnd = 0;
    };

    // Lexems up to kShort are looked up at once, and those up to kNearby without remembering them.
    static constexpr std::size_t kShort = 16;
    static constexpr std::size_t kNearby = 64;
    static constexpr std::size_t kFarCandidate = 4096;
    static constexpr std::size_t kFewCandidates = 16;  // most texts have no more

    static std::uint32_t CodeOf(wchar_t character) { return static_cast<std::uint32_t>(character); }
    std::size_t SkipSome(std::size_t from);
    std::size_t FindOnly(const CompiledLexem& lexem, std::size_t from) {
        const std::size_t limit = std::min(from + kShort, size_);
        for (std::size_t at = from; at < limit; ++at) {
            if (text_[at] == lexem.onlyStop) return at;
        }
        return FindOnlyBeyond(lexem, from);
    }
    std::size_t FindOnlyBeyond(const CompiledLexem& lexem, std::size_t from);
    std::size_t FindEndFrom(const CompiledLexem& lexem, std::size_t first);
    std::size_t FindBeyond(const CharacterSet& set, std::size_t from, std::size_t known);
    std::size_t FindOnlyFirst(wchar_t character, std::size_t from);
    void ListOnlyFirst(wchar_t character);
    std::size_t FindFar(const CharacterSet& set, std::size_t from, std::size_t known);
    Runs& RunsOf(const CharacterSet& set);

    const wchar_t* text_ = nullptr;
    std::size_t size_ = 0;
    CharacterSet blanks_;
    std::uint32_t largestBlank_ = 0;
    const CharacterSet* notBlanks_ = nullptr;
    std::size_t setCount_ = 0;
    std::vector<std::size_t> onlyFirst_;  // where that character of the last such entry stands
    wchar_t onlyFirstOf_ = 0;
    std::size_t nextOnlyFirst_ = 0;  // behind the one that was found last
    std::vector<Runs> runs_;  // by the set's index; empty until there is something to remember
};

}  // namespace helpers::scripting
