#pragma once

// Runs a program over a text: backtracking on a stack of its own, never on the thread's. Not for
// several threads at once.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "helpers/scripting/PieceRecorder.h"
#include "helpers/scripting/Program.h"
#include "helpers/scripting/SmallList.h"
#include "helpers/scripting/TextScanner.h"

namespace helpers::scripting {

// The last lexem that was read anywhere, by a match that failed later or a keyword that differed
// included.
struct LastLexem {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::uint32_t kind = 0;
};

class Matcher {
public:
    using Report = void (*)(int line);

    // What matching reads from.
    TextScanner& Scanner() { return scanner_; }

    // Matches at `position` and moves it behind the match; on failure it stays. What the match
    // stores goes into `pieces`; see Recorded(). `before` more pieces are in a list of the
    // caller's.
    bool Match(const Entry& entry, std::size_t& position, Pieces& pieces, std::size_t before,
               Report report) {
        Start(pieces, before, report);
        return Run<false>(entry.begin, position);
    }
    // The same for the entry of a lexem that has a certain shape.
    bool MatchLexem(const CompiledLexem& lexem, std::size_t& position, Pieces& pieces);
    // Looks for the first position from `position` on where the entry matches, and moves it there
    // (peek) or behind the match; on failure it stays.
    bool Find(const Program& program, const Entry& entry, std::size_t& position, bool peek,
              Report report);
    // What the last match stored; after a failure, what it left appended to the caller's list.
    const PieceRecorder& Recorded() const { return pieces_; }

    const LastLexem& Last() const { return last_; }
    void SetLast(const LastLexem& last) { last_ = last; }

private:
    // Where the matcher stands: the position, and the next character that is no blank, or the
    // text's end.
    struct Place {
        std::size_t position;
        std::size_t first;
    };
    static constexpr std::uint32_t kPlainChoice = kNone;
    static constexpr std::uint32_t kRereadingChoice = kNone - 1;
    // An open choice (from where to go on, and what was stored by then) or an open call (from
    // where, after how many lexems, and of which rule).
    struct Frame {
        const Instruction* opened;
        std::uint32_t callee;  // or one of the two above
        std::uint32_t count;   // pieces, or lexems read; no text is longer than 32 bits can tell
        Place place;
    };
    // What a choice goes back to besides, when its second alternative begins with what was read
    // before it.
    struct Reread {
        PieceRecorder::State pieces;
        LastLexem last;
    };
    // What a call came to during a search.
    struct Remembered {
        std::size_t end;  // kNoPosition: no match
        bool readLexems;  // and `last` last
        LastLexem last;
    };
    // Neighbours in the text stay neighbours in memory: they are asked for one after the other.
    struct KeyHash {
        std::size_t operator()(const std::pair<std::uint32_t, std::size_t>& key) const {
            return key.second + key.first * std::size_t{0x9E3779B97F4A7C15};
        }
    };
    using Memory = std::unordered_map<std::pair<std::uint32_t, std::size_t>, Remembered, KeyHash>;

    // At the end of a search, however it ends.
    struct Forgetting {
        std::unique_ptr<Memory>& memory;
        ~Forgetting() { memory.reset(); }
    };

    void Start(Pieces& pieces, std::size_t before, Report report) {
        report_ = report;
        frames_.clear();
        rereads_.clear();
        pieces_.Start(pieces, before);
    }
    bool FindKeyword(const Program& program, const Entry& entry, std::size_t& position, bool peek,
                     Report report);
    bool MatchFound(const Program& program, const Entry& entry, std::size_t from,
                    std::size_t& position, bool peek, Report report);
    template <bool kRemembers>
    bool Run(const Instruction* at, std::size_t& position);
    std::size_t EndOfWord(const Instruction& instruction, Place place);
    std::size_t EndOfUntil(const Instruction& instruction, Place place);
    template <bool kRemembers>
    bool ReadMark(const Instruction& instruction, Place& place);
    template <bool kRemembers>
    bool ReadMarkBehind(const Instruction& instruction, Place& place);
    template <bool kRemembers>
    bool ReadWord(const Instruction& instruction, std::size_t end, Place& place);
    template <bool kRemembers>
    bool ReadKeyword(const Instruction& instruction, Place& place);
    template <bool kRemembers>
    bool ReadLexem(const Instruction& instruction, const CompiledLexem& lexem,
                   const Keyword* keyword, Place& place);
    void Store(const Instruction& instruction, std::wstring_view lexem);
    template <bool kRemembers>
    bool Call(const Instruction& call, Place place);
    template <bool kRemembers>
    const Instruction* Return(Place place);
    bool StandsAt(Place place, const CharacterSet& set) const;
    void Choose(const Instruction& choice, Place place);
    bool Backtrack();
    bool IsOpenHere(std::uint32_t callee, Place place) const;
    bool Recall(const Instruction& call, Place place);
    void Remember(const Frame& frame, std::size_t end);
    Place PlaceAt(std::size_t position) {
        if (position > scanner_.End()) return {position, scanner_.End()};
        return {position, scanner_.SkipBlanks(position)};
    }

    TextScanner scanner_;
    LastLexem last_;
    Report report_ = nullptr;
    PieceRecorder pieces_;
    SmallList<Frame, 8> frames_;             // most texts need no more
    SmallList<Reread, 4> rereads_;           // one for each choice of that sort among the frames
    std::unique_ptr<Memory> memory_;         // only while a search remembers
    std::uint32_t reads_ = 0;                // lexems read, while a search remembers
    const Instruction* resumeAt_ = nullptr;  // where backtracking, or what is remembered, leads
    Place resumePlace_{};
    std::size_t start_ = 0;  // where the match began, behind blanks
};

}  // namespace helpers::scripting
