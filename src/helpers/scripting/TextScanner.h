#pragma once

// Looks characters and lexems up in a text that stays as it is. Whatever the text, asking again and
// again costs a bounded number of steps: long runs without a stop character are remembered. Not for
// several threads at once.

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
        text_ = text;
        program_ = &program;
        runs_.clear();
    }

    std::wstring_view Text() const { return text_; }

    // The first character from `from` on that is no blank; kNoPosition for none.
    std::size_t SkipBlanks(std::size_t from) {
        if (from >= text_.size()) return kNoPosition;
        if (!program_->blanks.Has(text_[from])) return from;
        return Find(program_->notBlanks, from + 1);
    }

    // The first character of the set from `from` on; kNoPosition for none.
    std::size_t Find(const CharacterSet& set, std::size_t from) {
        const std::size_t end = text_.size();
        const std::size_t limit = from < end && end - from > kShort ? from + kShort : end;
        for (std::size_t index = from; index < limit; ++index) {
            if (set.Has(text_[index])) return index;
        }
        return limit == end ? kNoPosition : FindBeyond(set, from, limit);
    }

    // The first character from `from` on that the entry's matches may begin with; kNoPosition for
    // none.
    std::size_t FindCandidate(const Entry& entry, std::size_t from);

    // Reads a lexem that begins with the character at `first`, which is inside the text.
    LexemOutcome Read(const CompiledLexem& lexem, std::size_t first, LexemSpan& span) {
        if (!lexem.start.Has(text_[first])) return LexemOutcome::kWrongStart;
        std::size_t stop = first + 1;
        if (lexem.oneBeforeBlank) {
            if (stop >= text_.size() || !lexem.stop.Has(text_[stop])) {
                return LexemOutcome::kWrongStart;
            }
        } else {
            stop = Find(lexem.stop, first);
            if (stop == kNoPosition) return LexemOutcome::kNoStop;
        }
        span.begin = lexem.keepFirst ? first : first + 1;
        const std::size_t end = lexem.keepStop ? stop + 1 : stop;
        span.length = end > span.begin ? end - span.begin : 1;  // a lexem is never empty
        span.next = first + span.length + (lexem.keepStop || lexem.skipStop ? 1 : 0);
        return LexemOutcome::kRead;
    }

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

    std::size_t FindBeyond(const CharacterSet& set, std::size_t from, std::size_t known);
    std::size_t FindFar(const CharacterSet& set, std::size_t from, std::size_t known);
    Runs& RunsOf(const CharacterSet& set);

    std::wstring_view text_;
    const Program* program_ = nullptr;
    std::vector<Runs> runs_;  // by the set's index; empty until there is something to remember
};

}  // namespace helpers::scripting
