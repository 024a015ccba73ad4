#pragma once

// What a matched rule stored: pieces of the script's text, in order.

#include <cstddef>
#include <string>
#include <string_view>

#include "helpers/scripting/SmallList.h"

namespace helpers::scripting {

// Views into the script's text, or, for a piece that was joined across a gap, into this object.
// Valid until the next match into it and while the script lives. Not for several threads at once.
class Pieces {
public:
    bool empty() const { return views_.empty(); }
    std::size_t size() const { return views_.size(); }
    std::wstring_view operator[](std::size_t index) const { return views_[index]; }
    auto begin() const { return views_.begin(); }
    auto end() const { return views_.end(); }
    void clear() { views_.clear(); }

private:
    friend class PieceRecorder;

    using Views = SmallList<std::wstring_view, 16>;  // most rules have no more

    Views views_;
    std::wstring joined_;
};

}  // namespace helpers::scripting
