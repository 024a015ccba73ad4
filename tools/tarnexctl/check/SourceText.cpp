#include "check/SourceText.h"

#include <algorithm>

#include "frame/Text.h"
#include "platform/CodePage.h"

namespace tarnexctl {
namespace {

constexpr std::size_t kTabWidth = 4;
// Columns of an excerpt, in front of the mark and from there on.
constexpr std::size_t kBefore = 60;
constexpr std::size_t kBehind = 60;
constexpr const char kCut[] = "...";

// Lines end with a line feed, or with a carriage return that no line feed follows.
bool EndsLine(std::string_view bytes, std::size_t i) {
    if (bytes[i] == '\n') return true;
    return bytes[i] == '\r' && (i + 1 == bytes.size() || bytes[i + 1] != '\n');
}

// Up to the last `width` bytes that do not begin within a UTF-8 sequence.
std::string_view Tail(std::string_view bytes, std::size_t width) {
    std::size_t from = bytes.size() - std::min(bytes.size(), width);
    while (from < bytes.size() && (static_cast<unsigned char>(bytes[from]) & 0xC0u) == 0x80u) {
        ++from;
    }
    return bytes.substr(from);
}

std::string_view Head(std::string_view bytes, std::size_t width) {
    std::size_t to = std::min(bytes.size(), width);
    while (to < bytes.size() && (static_cast<unsigned char>(bytes[to]) & 0xC0u) == 0x80u) ++to;
    return bytes.substr(0, to);
}

// Adds the text with tabs as blanks and control characters as escapes.
void Append(std::string& line, std::string_view text) {
    while (!text.empty()) {
        const std::size_t tab = text.find('\t');
        line += Printable(text.substr(0, tab));
        if (tab == text.npos) return;
        line.append(kTabWidth - DisplayWidth(line) % kTabWidth, ' ');
        text.remove_prefix(tab + 1);
    }
}

}  // namespace

SourceText::SourceText(std::string_view bytes)
    // A byte-order mark is no character of the first line.
    : bytes_(bytes),
      lines_{bytes.starts_with("\xEF\xBB\xBF") ? 3u : 0u},
      isUtf8_(IsValidUtf8(bytes)) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (EndsLine(bytes, i)) lines_.push_back(i + 1);
    }
}

std::string SourceText::Decoded(std::string_view bytes) const {
    if (isUtf8_) return std::string(bytes);
    return ToUtf8(platform::ToWide(bytes, platform::CodePage::kAnsi));
}

Place SourceText::At(std::uint64_t offset) const {
    return At(offset, true);
}

Place SourceText::At(std::uint64_t offset, bool withColumn) const {
    offset = std::clamp<std::uint64_t>(offset, lines_.front(), bytes_.size());
    const auto next = std::upper_bound(lines_.begin(), lines_.end(), offset);
    Place place;
    place.line = static_cast<std::uint64_t>(next - lines_.begin());
    if (withColumn) {
        const std::uint64_t begin = *std::prev(next);
        const std::string_view before = bytes_.substr(begin, offset - begin);
        place.column = 1 + DisplayWidth(isUtf8_ ? before : std::string_view(Decoded(before)));
    }
    return place;
}

bool SourceText::IsFirstOfLine(std::uint64_t offset) const {
    const std::uint64_t begin = lines_[LineOf(offset) - 1];
    return bytes_.substr(begin, offset - begin).find_first_not_of(" \t") == bytes_.npos;
}

std::string_view SourceText::Line(std::uint64_t line) const {
    const std::uint64_t begin = lines_[line - 1];
    const std::uint64_t end = line < lines_.size() ? lines_[line] : bytes_.size();
    std::string_view text = bytes_.substr(begin, end - begin);
    while (text.ends_with('\n') || text.ends_with('\r')) text.remove_suffix(1);
    return text;
}

Excerpt SourceText::Around(ByteRange range) const {
    const std::uint64_t number = LineOf(range.begin);
    const std::string_view line = Line(number);
    if (line.find('\0') != line.npos) return {};  // no text
    const std::uint64_t lineBegin = lines_[number - 1];
    const auto at =
        std::min<std::size_t>(std::max(range.begin, lineBegin) - lineBegin, line.size());
    const auto to =
        std::clamp<std::size_t>(range.end < lineBegin ? 0 : range.end - lineBegin, at, line.size());

    const std::string_view before = Tail(line.substr(0, at), kBefore);
    const std::string_view marked = Head(line.substr(at, to - at), kBehind);
    const std::string_view behind =
        Head(line.substr(at + marked.size()), kBehind - std::min(marked.size(), kBehind));
    Excerpt excerpt;
    if (before.size() < at) excerpt.text = kCut;
    Append(excerpt.text, Decoded(before));
    excerpt.markAt = DisplayWidth(excerpt.text);
    Append(excerpt.text, Decoded(marked));
    excerpt.markWidth = std::max<std::size_t>(1, DisplayWidth(excerpt.text) - excerpt.markAt);
    Append(excerpt.text, Decoded(behind));
    if (at + marked.size() + behind.size() < line.size()) excerpt.text += kCut;
    return excerpt;
}

}  // namespace tarnexctl
