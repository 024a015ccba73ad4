#include "check/Headers.h"

#include <algorithm>
#include <string>

#include "compositions/language/ScriptCharacters.h"

namespace tarnexctl {
namespace {

namespace characters = compositions::characters;
using compositions::kSectionCount;

bool SetHolds(std::wstring_view set, wchar_t character) {
    return set.find(character) != std::wstring_view::npos;
}

std::size_t BehindBlanks(std::wstring_view text, std::size_t position) {
    return std::min(text.find_first_not_of(characters::kBlanks, position), text.size());
}

std::optional<Section> SectionOf(std::wstring_view word) {
    for (std::size_t i = 0; i < kSectionCount; ++i) {
        if (IsHeaderOf(word, static_cast<Section>(i))) return static_cast<Section>(i);
    }
    return std::nullopt;
}

std::string Header(Section section) {
    return std::string("[") + SectionKeyword(section) + "]";
}

std::vector<std::wstring_view> Keywords() {
    static const std::vector<std::wstring> kKeywords = [] {
        std::vector<std::wstring> keywords;
        for (std::size_t i = 0; i < kSectionCount; ++i) {
            const std::string_view keyword = SectionKeyword(static_cast<Section>(i));
            keywords.emplace_back(keyword.begin(), keyword.end());
        }
        return keywords;
    }();
    return {kKeywords.begin(), kKeywords.end()};
}

template <class Visit>
void ForEachSection(const Recording& record, Visit visit) {
    for (std::size_t i = 0; i < kSectionCount; ++i) {
        const auto section = static_cast<Section>(i);
        if (record.Of(section).found) visit(section, record.Of(section));
    }
}

}  // namespace

std::vector<BracketedWord> FindBracketedWords(std::wstring_view text) {
    std::vector<BracketedWord> found;
    for (std::size_t begin = text.find(L'['); begin != text.npos; begin = text.find(L'[', begin)) {
        const std::size_t first = BehindBlanks(text, ++begin);
        std::size_t last = first;
        while (last < text.size() && !SetHolds(characters::kAfterIdent, text[last])) ++last;
        const std::size_t close = BehindBlanks(text, last);
        if (last == first || close == text.size() || text[close] != L']') continue;
        if (!SetHolds(characters::kIdentStart, text[first])) continue;
        const std::wstring_view word = text.substr(first, last - first);
        const bool blankBehind =
            close + 1 < text.size() && SetHolds(characters::kBlanks, text[close + 1]);
        found.push_back({begin - 1, close + 1, word, blankBehind, SectionOf(word)});
    }
    return found;
}

Headers::Headers(const Subject& subject, const SourceText& source)
    : subject_(subject), source_(source), brackets_(FindBracketedWords(subject.Text())) {}

const BracketedWord* Headers::At(std::size_t position) const {
    const auto found = std::lower_bound(
        brackets_.begin(), brackets_.end(), position,
        [](const BracketedWord& bracket, std::size_t at) { return bracket.begin < at; });
    return found != brackets_.end() && found->begin == position ? &*found : nullptr;
}

const BracketedWord* Headers::FailedHeaderOf(Section section) const {
    for (const BracketedWord& bracket : brackets_) {
        if (bracket.section == section && !bracket.blankBehind) return &bracket;
    }
    return nullptr;
}

// Within a header or the statements of a section.
bool Headers::IsRead(std::uint64_t offset) const {
    bool read = false;
    ForEachSection(subject_.Record(), [&](Section, const RecordedSection& record) {
        read = read || (offset >= record.header.begin && offset < record.end);
    });
    return read;
}

bool Headers::IsWithinText(Section section) const {
    const std::uint64_t begin = subject_.Record().Of(section).header.begin;
    bool within = false;
    ForEachSection(subject_.Record(), [&](Section, const RecordedSection& record) {
        within = within || (begin > record.header.begin && begin < record.end);
    });
    return within;
}

// A header that the reader finds, or would if it came to look for it.
bool Headers::Counts(const BracketedWord& bracket) const {
    if (!bracket.section || !bracket.blankBehind) return false;
    const RecordedSection& record = subject_.Record().Of(*bracket.section);
    return !record.wasLookedFor || subject_.OffsetAt(bracket.begin) == record.header.begin;
}

std::uint64_t Headers::NextHeader(std::uint64_t offset) const {
    for (const BracketedWord& bracket : brackets_) {
        const std::uint64_t begin = subject_.OffsetAt(bracket.begin);
        if (begin >= offset && Counts(bracket)) return begin;
    }
    return subject_.Bytes().size();
}

std::vector<std::string> Headers::NotRead(std::uint64_t from) const {
    const std::string_view bytes = subject_.Bytes();
    const std::uint64_t next = NextHeader(from);
    const std::size_t end = bytes.substr(0, next).find_last_not_of(" \t\r\n");
    if (end == bytes.npos || end < from) return {};
    const std::uint64_t firstLine = source_.LineOf(from);
    const std::uint64_t lastLine = source_.LineOf(end);
    const bool whole = source_.IsFirstOfLine(from);
    const std::string first = std::to_string(firstLine);
    const std::string last = std::to_string(lastLine);
    if (firstLine == lastLine) {
        return {(whole ? "not read: line " : "not read: the rest of line ") + last};
    }
    return {whole ? "not read: lines " + first + " to " + last
                  : "not read: the rest of line " + first + ", up to line " + last};
}

void Headers::Check(Diagnostics& diagnostics) const {
    CheckFront(diagnostics);
    CheckWithinText(diagnostics);
    CheckUnreached(diagnostics);
    for (const BracketedWord& bracket : brackets_) {
        const std::uint64_t offset = subject_.OffsetAt(bracket.begin);
        if (!Counts(bracket) && !IsRead(offset)) CheckBracket(bracket, diagnostics);
    }
}

void Headers::CheckBracket(const BracketedWord& bracket, Diagnostics& diagnostics) const {
    const ByteRange range = subject_.RangeOf(bracket.begin, bracket.end);
    std::vector<std::string> notRead;
    if (diagnostics.HasRoom()) notRead = NotRead(range.begin);
    if (bracket.section && !bracket.blankBehind) {
        std::vector<std::string> help;
        if (range.end < subject_.Bytes().size() && subject_.Bytes()[range.end] == ';') {
            help.push_back("the comment takes the line end with it: put a blank in front of the ;");
        }
        help.insert(help.end(), notRead.begin(), notRead.end());
        diagnostics.Add("C313", range, "no header: no blank follows the \"]\"", help);
    } else if (bracket.section) {
        if (IsWithinText(*bracket.section)) return;  // told where that one stands
        const std::uint64_t first = subject_.Record().Of(*bracket.section).header.begin;
        diagnostics.Add("C315", range,
                        Header(*bracket.section) + " again: the one of line " +
                            std::to_string(source_.LineOf(first)) + " counts",
                        notRead);
    } else {
        std::vector<std::string> help = DidYouMean(bracket.word, Keywords());
        help.insert(help.end(), notRead.begin(), notRead.end());
        diagnostics.Add("C314", range, "there is no section " + Quoted(bracket.word), help);
    }
}

void Headers::CheckUnreached(Diagnostics& diagnostics) const {
    std::string names;
    ByteRange first;
    for (const BracketedWord& bracket : brackets_) {
        if (!Counts(bracket) || subject_.Record().Of(*bracket.section).wasLookedFor) continue;
        const std::string name = SectionKeyword(*bracket.section);
        if (names.find(name) != names.npos) continue;
        if (names.empty()) first = subject_.RangeOf(bracket.begin, bracket.end);
        names += (names.empty() ? "" : ", ") + name;
    }
    if (names.empty()) return;
    diagnostics.Add("C319", first, "not read, since an earlier section was refused: " + names);
}

void Headers::CheckFront(Diagnostics& diagnostics) const {
    const std::wstring_view text = subject_.Text();
    const std::size_t begin = BehindBlanks(text, subject_.FirstPosition());
    if (begin >= text.size() || At(begin) != nullptr) return;
    const std::uint64_t offset = subject_.OffsetAt(begin);
    const std::uint64_t next = NextHeader(offset);
    if (next == subject_.Bytes().size()) return;  // a script without a header has worse troubles
    const std::size_t end = subject_.PositionOf(next);
    const std::size_t last = text.find_last_not_of(characters::kBlanks, end - 1);
    if (last == text.npos || last < begin) return;
    diagnostics.Add("C318", subject_.RangeOf(begin, last + 1),
                    "what stands in front of the first header is not read");
}

void Headers::CheckWithinText(Diagnostics& diagnostics) const {
    ForEachSection(subject_.Record(), [&](Section section, const RecordedSection& record) {
        if (!IsWithinText(section)) return;
        std::vector<std::string> help;
        for (const BracketedWord& bracket : brackets_) {
            const std::uint64_t offset = subject_.OffsetAt(bracket.begin);
            if (bracket.section != section || offset <= record.header.begin) continue;
            help.push_back("the one of line " + std::to_string(source_.LineOf(offset)) +
                           " is not used: the first one counts");
            break;
        }
        diagnostics.Add("C316", record.header,
                        Header(section) + " within a text is taken for the section's header", help);
    });
}

}  // namespace tarnexctl
