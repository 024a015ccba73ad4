#pragma once

// Keeps what a match has stored so far as views into the text; nothing is copied before the match
// has succeeded, and going back is cutting two lists.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "helpers/scripting/Pieces.h"

namespace helpers::scripting {

class PieceRecorder {
public:
    // All that appending to the last piece can change.
    struct State {
        std::wstring_view last;
        std::size_t joins = 0;
    };

    PieceRecorder() { pieces_.reserve(Pieces::kFew); }

    // Starts over, behind `before` pieces that the caller's list holds already.
    void Start(std::size_t before) {
        before_ = before;
        pieces_.clear();
        joins_.clear();
    }
    std::size_t Count() const { return before_ + pieces_.size(); }

    void Add(std::wstring_view piece) { pieces_.push_back(piece); }
    // To the last piece; to a new one where there is none.
    void Append(std::wstring_view part);

    // Forgets the pieces from `count` on. What was appended to an earlier piece meanwhile stays, as
    // it does when a list of strings is cut.
    void CutTo(std::size_t count) {
        const std::size_t own = count - before_;
        if (own >= pieces_.size()) return;
        pieces_.resize(own);
        while (!joins_.empty() && joins_.back().piece > own) joins_.pop_back();
    }
    void CutToStart() { CutTo(before_); }

    // For going back to the very state that was left, appended parts included.
    State Save() const {
        return {pieces_.empty() ? std::wstring_view() : pieces_.back(),
                joins_.empty() ? 0 : joins_.size()};
    }
    void CutTo(std::size_t count, const State& state) {
        CutTo(count);
        if (!pieces_.empty()) pieces_.back() = state.last;
        joins_.resize(state.joins);
    }

    // Hands the new pieces over to `out`; to be started again before it is used again. Needs
    // Start(0).
    void MoveTo(Pieces& out);
    // Appends to `out`, which held the pieces of Start().
    void AppendTo(std::vector<std::wstring>& out) const;

private:
    // A part of a piece, which does not stand in the text where the piece's last part ends.
    struct Join {
        std::size_t piece;  // counted from 1; 0 is the last of the caller's
        std::wstring_view part;
    };

    void JoinInto(Pieces& out) const;

    std::size_t before_ = 0;
    std::vector<std::wstring_view> pieces_;
    std::vector<Join> joins_;  // by piece, in the order of the parts
};

}  // namespace helpers::scripting
