#pragma once

// Keeps what a match has stored so far as offsets into the text; nothing is copied before the match
// has succeeded, and going back is cutting two arrays.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "helpers/scripting/Pieces.h"

namespace helpers::scripting {

class PieceRecorder {
public:
    // Starts over, behind `before` pieces that the caller's list holds already.
    void Start(std::size_t before) {
        before_ = before;
        segments_.clear();
        starts_.clear();
    }
    std::size_t Count() const { return before_ + starts_.size(); }

    void Add(std::size_t begin, std::size_t length) {
        starts_.push_back(segments_.size());
        if (length != 0) segments_.push_back({begin, length});
    }
    // To the last piece; to a new one where there is none.
    void Append(std::size_t begin, std::size_t length) {
        if (Count() == 0) return Add(begin, length);
        segments_.push_back({begin, length});
    }
    // Forgets the pieces from `count` on. What was appended to an earlier piece meanwhile stays, as
    // it does when a list of strings is cut.
    void CutTo(std::size_t count) {
        const std::size_t own = count - before_;
        if (own >= starts_.size()) return;
        segments_.resize(starts_[own]);
        starts_.resize(own);
    }

    void CutToStart() { CutTo(before_); }

    // For going back to the very state that was left, joined pieces included.
    std::size_t SegmentCount() const { return segments_.size(); }
    void CutSegmentsTo(std::size_t count) { segments_.resize(count); }

    // Fills `out` with the new pieces. Needs Start(0).
    void Fill(std::wstring_view text, Pieces& out) const;
    // Appends to `out`, which held the pieces of Start().
    void AppendTo(std::wstring_view text, std::vector<std::wstring>& out) const;

private:
    struct Segment {
        std::size_t begin;
        std::size_t length;
    };

    std::size_t SegmentsEnd(std::size_t piece) const {
        return piece + 1 < starts_.size() ? starts_[piece + 1] : segments_.size();
    }
    bool IsOneRun(std::size_t first, std::size_t last) const;

    std::size_t before_ = 0;
    std::vector<Segment> segments_;
    std::vector<std::size_t> starts_;  // each new piece's first segment
};

}  // namespace helpers::scripting
