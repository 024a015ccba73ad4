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

    // Starts over into `out`, which stays until the next start. `before`: how many pieces a list
    // of the caller's holds already.
    void Start(Pieces& out, std::size_t before) {
        out.clear();
        pieces_ = &out.views_;
        before_ = before;
        joins_.clear();
    }
    std::size_t Count() const { return before_ + pieces_->size(); }

    void Add(std::wstring_view piece) { pieces_->push_back(piece); }
    // To the last piece; to a new one where there is none.
    void Append(std::wstring_view part);

    // Forgets the pieces from `count` on. What was appended to an earlier piece meanwhile stays, as
    // it does when a list of strings is cut.
    void CutTo(std::size_t count) {
        const std::size_t own = count - before_;
        if (own >= pieces_->size()) return;
        pieces_->CutTo(own);
        while (!joins_.empty() && joins_.back().piece > own) joins_.pop_back();
    }
    void CutToStart() { CutTo(before_); }

    // For going back to the very state that was left, appended parts included.
    State Save() const {
        return {pieces_->empty() ? std::wstring_view() : pieces_->back(), joins_.size()};
    }
    void CutTo(std::size_t count, const State& state) {
        CutTo(count);
        if (!pieces_->empty()) pieces_->back() = state.last;
        joins_.resize(state.joins);
    }

    // Makes `out`, into which it was started behind no pieces, whole.
    void Finish(Pieces& out) const {
        if (!joins_.empty()) JoinInto(out);
    }
    // Appends to `out`, the caller's list.
    void AppendTo(std::vector<std::wstring>& out) const;

private:
    // A part of a piece, which does not stand in the text where the piece's last part ends.
    struct Join {
        std::size_t piece;  // counted from 1; 0 is the last of the caller's
        std::wstring_view part;
    };

    void JoinInto(Pieces& out) const;

    std::size_t before_ = 0;
    Pieces::Views* pieces_ = nullptr;
    std::vector<Join> joins_;  // by piece, in the order of the parts
};

}  // namespace helpers::scripting
