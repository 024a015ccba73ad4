#include "check/Subject.h"

#include <algorithm>
#include <vector>

#include "compositions/UpperName.h"
#include "compositions/language/ScriptCharacters.h"
#include "frame/Suggest.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

constexpr std::size_t kLongestShown = 60;
constexpr std::size_t kMostCandidates = 300;

// The bytes that the characters were widened from, decoded.
std::string Narrowed(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) bytes += static_cast<char>(character & 0xFF);
    return FromSystemBytes(bytes);
}

}  // namespace

bool Subject::IsWhole(Section section) const {
    const RecordedSection& record = recording_.Of(section);
    if (!record.wasLookedFor) return false;
    if (!record.found) return true;  // nothing was written
    if (record.status != compositions::status::kRead) return false;
    if (record.end == bytes_.size()) return true;
    for (std::size_t i = 0; i < compositions::kSectionCount; ++i) {
        const RecordedSection& other = recording_.Of(static_cast<Section>(i));
        if (other.found && other.header.begin == record.end) return true;
    }
    return false;
}

const compositions::ByteOffsets& Subject::Offsets() const {
    if (!offsets_) offsets_.emplace(bytes_);
    return *offsets_;
}

std::size_t Subject::PositionOf(std::uint64_t offset) const {
    std::size_t low = 0;
    std::size_t high = Text().size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (Offsets().At(middle) < offset) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

ByteRange Subject::RangeOf(std::size_t begin, std::size_t end) const {
    const std::uint64_t from = Offsets().At(begin);
    const std::uint64_t size = bytes_.size();  // where the text's last blank stands
    return {from, end <= begin ? from : std::min(Offsets().At(end - 1) + 1, size)};
}

ByteRange Subject::RangeOf(const RecordedStatement& statement, std::wstring_view piece) const {
    if (piece.empty()) return statement.range;
    const auto begin = static_cast<std::size_t>(piece.data() - Text().data());
    return RangeOf(begin, begin + piece.size());
}

std::vector<std::wstring_view> Subject::NamesOf(Section section) const {
    std::vector<std::wstring_view> names;
    for (const RecordedStatement& statement : recording_.Statements(section)) {
        const std::wstring_view name = recording_.Pieces(statement)[0];
        if (statement.outcome == StatementOutcome::kTaken) names.push_back(name);
    }
    return names;
}

// The last character in front of the piece that is no blank.
wchar_t Subject::CharacterBefore(std::wstring_view piece) const {
    const wchar_t* at = piece.data();
    while (at > Text().data()) {
        if (compositions::characters::kBlanks.find(*--at) == std::wstring_view::npos) return *at;
    }
    return L'\0';
}

// A text can be empty, and then it stands nowhere; nothing else in front of "=" can.
bool Subject::IsQuoted(const RecordedStatement& statement, std::size_t piece) const {
    if (piece == 0) return bytes_[statement.range.begin] == '"';
    const std::wstring_view text = recording_.Pieces(statement)[piece];
    return text.empty() || CharacterBefore(text) == L'"';
}

bool Subject::IsVariable(std::wstring_view piece) const {
    return !piece.empty() && CharacterBefore(piece) == L'%';
}

std::size_t Subject::FirstQuoted(const RecordedStatement& statement) const {
    std::size_t piece = 0;
    while (piece < statement.pieceCount && !IsQuoted(statement, piece)) ++piece;
    return piece;
}

std::string Unquoted(std::wstring_view text) {
    std::string shown = Printable(Narrowed(text.substr(0, kLongestShown)));
    if (text.size() > kLongestShown) shown += "...";
    return shown;
}

std::string Quoted(std::wstring_view text) {
    return '"' + Unquoted(text) + '"';
}

bool IsHeaderOf(std::wstring_view word, Section section) {
    const std::string_view keyword = compositions::SectionKeyword(section);
    return compositions::IsKeyword(word, std::wstring(keyword.begin(), keyword.end()));
}

std::vector<std::string> DidYouMean(std::wstring_view word,
                                    const std::vector<std::wstring_view>& candidates) {
    std::vector<std::string> names;  // only some: candidates may be thousands
    for (const std::wstring_view candidate : candidates) {
        if (names.size() == kMostCandidates) break;
        names.push_back(Narrowed(candidate));
    }
    const auto meant = Suggest(Narrowed(word), names);
    if (!meant) return {};
    return {"did you mean \"" + Printable(*meant) + "\"?"};
}

}  // namespace tarnexctl
