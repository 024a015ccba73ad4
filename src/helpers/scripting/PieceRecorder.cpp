#include "helpers/scripting/PieceRecorder.h"

namespace helpers::scripting {

void PieceRecorder::Append(std::wstring_view part) {
    if (!pieces_->empty() && joins_.empty()) {
        std::wstring_view& last = pieces_->back();
        if (last.empty()) last = {part.data(), 0};
        if (last.data() + last.size() == part.data()) {
            last = {last.data(), last.size() + part.size()};
            return;
        }
    }
    if (Count() == 0) return Add(part);
    joins_.push_back({pieces_->size(), part});
}

void PieceRecorder::JoinInto(Pieces& out) const {
    out.joined_.clear();
    std::size_t length = 0;
    std::size_t piece = 0;
    for (const Join& join : joins_) {
        if (join.piece != piece) length += out.views_[join.piece - 1].size();
        piece = join.piece;
        length += join.part.size();
    }
    out.joined_.reserve(length);  // the views below must not move
    std::size_t begin = 0;
    piece = 0;
    for (const Join& join : joins_) {
        std::wstring_view& view = out.views_[join.piece - 1];
        if (join.piece != piece) {
            begin = out.joined_.size();
            out.joined_.append(view);
        }
        piece = join.piece;
        out.joined_.append(join.part);
        view = std::wstring_view(out.joined_).substr(begin);
    }
}

void PieceRecorder::AppendTo(std::vector<std::wstring>& out) const {
    const std::size_t first = out.size();
    for (const std::wstring_view piece : *pieces_) out.emplace_back(piece);
    for (const Join& join : joins_) out[first + join.piece - 1].append(join.part);
}

}  // namespace helpers::scripting
