#include "frame/Writer.h"

#include "frame/Text.h"

namespace tarnexctl {
namespace {

constexpr std::size_t kFlushAt = 64 * 1024;

const char* Escape(Style style) {
    switch (style) {
        case Style::kPlain:
            return "";
        case Style::kBold:
            return "\x1B[1m";
        case Style::kDim:
            return "\x1B[2m";
        case Style::kError:
            return "\x1B[1;31m";
        case Style::kWarning:
            return "\x1B[1;33m";
        case Style::kNote:
            return "\x1B[1;36m";
        case Style::kGood:
            return "\x1B[32m";
    }
    return "";
}

}  // namespace

Writer& Writer::operator<<(std::string_view text) {
    if (muted_) return *this;
    pending_ += text;
    if (pending_.size() >= kFlushAt) Flush();
    return *this;
}

std::string Writer::Paint(Style style, std::string_view text) const {
    if (!colour_ || style == Style::kPlain) return std::string(text);
    return std::string(Escape(style)).append(text).append("\x1B[0m");
}

void Writer::Flush() {
    if (pending_.empty()) return;
    // A sequence cut by the flush is kept for the next one.
    std::size_t end = pending_.size();
    for (std::size_t back = 1; back <= 3 && back <= pending_.size(); ++back) {
        const auto byte = static_cast<unsigned char>(pending_[pending_.size() - back]);
        if (byte >= 0xC0) {
            if (!IsValidUtf8(std::string_view(pending_).substr(pending_.size() - back)) &&
                pending_.size() >= kFlushAt) {
                end = pending_.size() - back;
            }
            break;
        }
        if (byte < 0x80) break;
    }
    const auto paused = line_.Pause();
    if (!platform::WriteStream(stream_, ValidUtf8(std::string_view(pending_).substr(0, end)))) {
        failed_ = true;
    }
    pending_.erase(0, end);
}

}  // namespace tarnexctl
