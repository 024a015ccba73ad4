#pragma once

// Looks characters and lexems up in a text that stays as it is. Whatever the text, asking again and
// again costs a bounded number of steps: long runs without a stop character are remembered. Not for
// several threads at once.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "helpers/scripting/Program.h"
#include "helpers/scripting/SmallList.h"

namespace helpers::scripting {

constexpr std::size_t kNoPosition = static_cast<std::size_t>(-1);

struct LexemSpan {
    std::size_t begin = 0;
    std::size_t length = 0;
    std::size_t next = 0;  // the position behind the lexem; may lie behind the text's end
};

enum class LexemOutcome { kRead, kWrongStart, kNoStop };

// Where a match may begin: the position, and the character behind the first lexem and blanks, in
// upper case when it is an ASCII one.
struct Candidate {
    std::uint32_t position;  // no text is longer than 32 bits can tell
    wchar_t behind;
};

class TextScanner {
public:
    // The text and the program must stay while the scanner works on them.
    void Reset(std::wstring_view text, const Program& program) {
        text_ = text.data();
        size_ = text.size();
        blanks_ = program.blanks;
        lowBlanks_ = program.lowBlanks;
        largestBlank_ = program.largestBlank;
        notBlanks_ = &program.notBlanks;
        setCount_ = program.sets.Count();
        candidatesOf_ = nullptr;
        runs_.clear();
    }

    std::wstring_view Text() const { return {text_, size_}; }
    // Where a zero stands, behind the text.
    std::size_t End() const { return size_; }

    // The first character from `from` on that is no blank; the text's end for none. For `from` up
    // to the text's end, where a zero stands.
    std::size_t SkipBlanks(std::size_t from) {
        // Most characters are larger than any blank, and most blanks stand alone or in pairs.
        if (CodeOf(text_[from]) > largestBlank_) [[likely]]
            return from;
        if (!IsLowBlank(text_[from])) [[unlikely]]
            return SkipSome(from);
        if (CodeOf(text_[from + 1]) > largestBlank_) [[likely]]
            return from + 1;
        if (!IsLowBlank(text_[from + 1])) [[unlikely]]
            return SkipSome(from + 1);
        if (CodeOf(text_[from + 2]) > largestBlank_) return from + 2;
        return SkipSome(from + 2);
    }

    // The first character from `from` on that the entry's matches may begin with; kNoPosition for
    // none.
    std::size_t FindCandidate(const Entry& entry, std::size_t from);
    // Where the lexem before the entry's keyword can be read, from `from` on. Valid until the next
    // call.
    std::span<const Candidate> FindCandidates(const Entry& entry, std::size_t from);

    // Where a lexem ends that begins with the character at `first`, for the two shapes; kNoPosition
    // when it does not begin so, or never ends.
    std::size_t EndOfWord(const CompiledLexem& lexem, std::size_t first) {
        if (!Begins(lexem, first)) [[unlikely]]
            return kNoPosition;
        const wchar_t* at = text_ + first + 1;
        for (const wchar_t* const limit = at + kShort; at != limit; ++at) {
            const std::uint32_t code = CodeOf(*at);
            if (code >= 256) [[unlikely]]
                break;
            const std::uint8_t quick = lexem.quick[code];
            if ((quick & CompiledLexem::kEnds) == 0) [[likely]]
                continue;
            if (quick & CompiledLexem::kStops) [[likely]] {
                return static_cast<std::size_t>(at - text_);
            }
            break;
        }
        return FindBeyond(lexem.stop, first + 1, static_cast<std::size_t>(at - text_));
    }
    std::size_t EndOfUntil(const CompiledLexem& lexem, std::size_t first) {
        if (!Begins(lexem, first)) [[unlikely]]
            return kNoPosition;
        if (first + kShort >= size_) [[unlikely]]
            return FindOnlyBeyond(lexem, first + 1);
        const wchar_t* const begin = text_ + first + 1;
        const wchar_t* const at = FindShort(begin, lexem.onlyStop);
        if (at == begin + kShort) return FindOnlyBeyond(lexem, first + 1);
        return static_cast<std::size_t>(at - text_);
    }
    // For any shape but kAny.
    std::size_t FindEnd(const CompiledLexem& lexem, std::size_t first) {
        if (lexem.shape == LexemShape::kWord) return EndOfWord(lexem, first);
        if (lexem.shape == LexemShape::kUntil) return EndOfUntil(lexem, first);
        return text_[first] == lexem.mark ? first + 1 : kNoPosition;
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

    static std::uint32_t CodeOf(wchar_t character) { return static_cast<std::uint32_t>(character); }
    // Says no where there are no low blanks; then every code is at most the largest blank's.
    bool IsLowBlank(wchar_t character) const {
        return (lowBlanks_ >> (CodeOf(character) & 63) & 1) != 0;
    }
    std::size_t SkipSome(std::size_t from);
    bool Begins(const CompiledLexem& lexem, std::size_t first) const {
        const wchar_t character = text_[first];
        if (CodeOf(character) >= 256) [[unlikely]]
            return lexem.start.Has(character);
        return (lexem.quick[CodeOf(character)] & CompiledLexem::kStarts) != 0;
    }
    // The character among kShort of the text, or the end of those.
    static const wchar_t* FindShort(const wchar_t* at, wchar_t character) {
        for (const wchar_t* const end = at + kShort; at != end; at += 4) {
            if (at[0] == character) return at;
            if (at[1] == character) return at + 1;
            if (at[2] == character) return at + 2;
            if (at[3] == character) return at + 3;
        }
        return at;
    }
    std::size_t FindOnlyBeyond(const CompiledLexem& lexem, std::size_t from);
    std::size_t FindBeyond(const CharacterSet& set, std::size_t from, std::size_t known);
    void ListCandidates(const Entry& entry);
    std::size_t FindFar(const CharacterSet& set, std::size_t from, std::size_t known);
    Runs& RunsOf(const CharacterSet& set);

    const wchar_t* text_ = nullptr;
    std::size_t size_ = 0;
    CharacterSet blanks_;
    std::uint64_t lowBlanks_ = 0;
    std::uint32_t largestBlank_ = 0;
    const CharacterSet* notBlanks_ = nullptr;
    std::size_t setCount_ = 0;
    // Of the whole text: whoever looks for one of several entries that begin alike asks for the
    // same ones again and again.
    SmallList<Candidate, 16> candidates_;          // most texts have no more
    const CompiledLexem* candidatesOf_ = nullptr;  // the first lexem; null before they are listed
    std::vector<Runs> runs_;  // by the set's index; empty until there is something to remember
};

}  // namespace helpers::scripting
