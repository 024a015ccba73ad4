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
#include "helpers/scripting/TextScanner.h"

namespace helpers::scripting {

// The last lexem that was read anywhere, by a match that failed later or a keyword that differed
// included.
struct LastLexem {
    std::uint32_t kind = 0;
    std::size_t begin = 0;
    std::size_t length = 0;
};

class Matcher {
public:
    using Report = void (*)(int line);

    Matcher(TextScanner& scanner, LastLexem& last) : scanner_(scanner), last_(last) {}

    // Matches at `position` and moves it behind the match; on failure it stays. `before` pieces are
    // in the caller's list already.
    bool Match(const Program& program, std::uint32_t address, std::size_t& position,
               std::size_t before, Report report);
    // Looks for the first position from `position` on where the entry matches, and moves it there
    // (peek) or behind the match; on failure it stays.
    bool Find(const Program& program, const Entry& entry, std::size_t& position, bool peek,
              Report report);
    // What the last match stored; after a failure, what it left appended to the caller's pieces.
    const PieceRecorder& Recorded() const { return pieces_; }

private:
    // An open choice (where to go on, from where, with how many pieces) or an open call (where to
    // return to, where from, after how many lexems read, and which rule).
    struct Frame {
        std::uint32_t address;
        std::uint32_t callee;  // kNone for a choice
        std::size_t position;
        std::size_t count;
    };
    // What a call came to during a search.
    struct Remembered {
        std::size_t end;  // kNoPosition: no match
        bool readLexems;  // and `last` last
        LastLexem last;
    };
    struct KeyHash {
        std::size_t operator()(const std::pair<std::uint32_t, std::size_t>& key) const {
            return (key.second * 0x9E3779B97F4A7C15u) ^ (std::size_t{key.first} << 32);
        }
    };
    using Memory = std::unordered_map<std::pair<std::uint32_t, std::size_t>, Remembered, KeyHash>;

    bool Run();
    bool ReadLexem(const Instruction& instruction);
    bool Call(const Instruction& instruction);
    void Return();
    void Choose(const Instruction& instruction);
    bool Backtrack();
    bool IsOpenHere(std::uint32_t callee) const;
    bool Recall(const Remembered& remembered);
    void Remember(const Frame& frame, std::size_t end);
    void MoveTo(std::size_t position);

    TextScanner& scanner_;
    LastLexem& last_;
    const Program* program_ = nullptr;
    Report report_ = nullptr;
    PieceRecorder pieces_;
    std::vector<Frame> frames_;
    std::unique_ptr<Memory> memory_;  // only while a search remembers
    std::size_t reads_ = 0;           // lexems read
    std::uint32_t at_ = 0;            // the instruction
    std::size_t position_ = 0;
    std::size_t first_ = 0;  // the next character that is no blank
};

}  // namespace helpers::scripting
