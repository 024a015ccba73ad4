#include "helpers/scripting/PieceRecorder.h"

namespace helpers::scripting {

bool PieceRecorder::IsOneRun(std::size_t first, std::size_t last) const {
    for (std::size_t index = first + 1; index < last; ++index) {
        const Segment& before = segments_[index - 1];
        if (before.begin + before.length != segments_[index].begin) return false;
    }
    return true;
}

void PieceRecorder::Fill(std::wstring_view text, Pieces& out) const {
    out.views_.clear();
    out.joined_.clear();
    std::size_t joinedLength = 0;
    for (std::size_t piece = 0; piece < starts_.size(); ++piece) {
        const std::size_t first = starts_[piece];
        const std::size_t last = SegmentsEnd(piece);
        if (IsOneRun(first, last)) continue;
        for (std::size_t index = first; index < last; ++index)
            joinedLength += segments_[index].length;
    }
    out.joined_.reserve(joinedLength);  // the views below must not move
    out.views_.reserve(starts_.size());
    for (std::size_t piece = 0; piece < starts_.size(); ++piece) {
        const std::size_t first = starts_[piece];
        const std::size_t last = SegmentsEnd(piece);
        if (first == last) {
            out.views_.emplace_back();
        } else if (IsOneRun(first, last)) {
            const Segment& end = segments_[last - 1];
            const std::size_t begin = segments_[first].begin;
            out.views_.push_back(text.substr(begin, end.begin + end.length - begin));
        } else {
            const std::size_t begin = out.joined_.size();
            for (std::size_t index = first; index < last; ++index) {
                out.joined_.append(text.substr(segments_[index].begin, segments_[index].length));
            }
            out.views_.push_back(std::wstring_view(out.joined_).substr(begin));
        }
    }
}

void PieceRecorder::AppendTo(std::wstring_view text, std::vector<std::wstring>& out) const {
    const auto join = [&](std::wstring& piece, std::size_t first, std::size_t last) {
        for (std::size_t index = first; index < last; ++index) {
            piece.append(text.substr(segments_[index].begin, segments_[index].length));
        }
    };
    const std::size_t appended = starts_.empty() ? segments_.size() : starts_.front();
    if (appended != 0) join(out.back(), 0, appended);
    for (std::size_t piece = 0; piece < starts_.size(); ++piece) {
        join(out.emplace_back(), starts_[piece], SegmentsEnd(piece));
    }
}

}  // namespace helpers::scripting
