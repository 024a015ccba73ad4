#include "compositions/language/ByteOffsets.h"

#include <algorithm>

namespace compositions {

ByteOffsets::ByteOffsets(std::string_view bytes) : byteCount_(bytes.size()) {
    std::size_t removed = 0;
    for (std::size_t comment = bytes.find(';'); comment != bytes.npos;) {
        const std::size_t lineFeed = bytes.find('\n', comment);
        const std::size_t next = lineFeed == bytes.npos ? bytes.size() : lineFeed + 1;
        const std::size_t position = comment - removed;
        removed += next - comment;
        if (!cuts_.empty() && cuts_.back().position == position) {
            cuts_.back().removed = removed;
        } else {
            cuts_.push_back({position, removed});
        }
        comment = bytes.find(';', next);
    }
}

std::size_t ByteOffsets::At(std::size_t position) const {
    const auto next =
        std::upper_bound(cuts_.begin(), cuts_.end(), position,
                         [](std::size_t value, const Cut& cut) { return value < cut.position; });
    const std::size_t removed = next == cuts_.begin() ? 0 : std::prev(next)->removed;
    if (position >= byteCount_ - removed) return byteCount_;
    return position + removed;
}

}  // namespace compositions
