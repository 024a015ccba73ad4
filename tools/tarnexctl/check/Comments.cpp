#include "check/Comments.h"

#include <algorithm>

#include "check/Subject.h"
#include "compositions/language/ScriptCharacters.h"

namespace tarnexctl {
namespace {

namespace characters = compositions::characters;

// Part of a name or a number: nothing that ends one.
bool IsWordByte(char byte) {
    return byte != '\0' &&
           characters::kAfterIdent.find(static_cast<wchar_t>(static_cast<unsigned char>(byte))) ==
               std::wstring_view::npos;
}

// Calls `visit` with the first and the last offset of each comment; the last one is that of the
// line feed, or the script's end.
template <class Visit>
void ForEachComment(std::string_view bytes, Visit visit) {
    std::size_t begin = bytes.find(';');
    while (begin != bytes.npos) {
        const std::size_t lineFeed = std::min(bytes.find('\n', begin), bytes.size());
        visit(begin, lineFeed);
        begin = bytes.find(';', lineFeed);
    }
}

// Whether the ";" has an odd number of quotes on either side of it, on its line: then it was meant
// to be a part of the text.
bool IsWithinText(std::string_view bytes, std::size_t semicolon, std::size_t lineFeed) {
    const std::string_view behind = bytes.substr(semicolon, lineFeed - semicolon);
    const auto quotesBehind = std::count(behind.begin(), behind.end(), '"');
    if (quotesBehind % 2 == 0) return false;
    const std::size_t before = bytes.rfind('\n', semicolon);
    const std::size_t lineBegin = before == bytes.npos ? 0 : before + 1;
    const std::string_view front = bytes.substr(lineBegin, semicolon - lineBegin);
    if (front.find(';') != front.npos) return false;
    return std::count(front.begin(), front.end(), '"') % 2 == 1;
}

std::size_t WordBegin(std::string_view bytes, std::size_t end) {
    while (end > 0 && IsWordByte(bytes[end - 1])) --end;
    return end;
}

std::size_t WordEnd(std::string_view bytes, std::size_t begin) {
    while (begin < bytes.size() && IsWordByte(bytes[begin])) ++begin;
    return begin;
}

bool JoinsWords(std::string_view bytes, std::size_t semicolon, std::size_t behind) {
    return semicolon > 0 && behind < bytes.size() && IsWordByte(bytes[semicolon - 1]) &&
           IsWordByte(bytes[behind]);
}

}  // namespace

std::vector<CommentTrouble> FindCommentTrouble(std::string_view bytes) {
    std::vector<CommentTrouble> found;
    std::size_t first = bytes.npos;  // of comments that follow each other directly
    std::size_t behind = bytes.npos;
    ForEachComment(bytes, [&](std::size_t begin, std::size_t end) {
        if (behind != begin) first = begin;
        behind = end + 1;
        if (IsWithinText(bytes, begin, end)) {
            found.push_back({CommentTrouble::Kind::kWithinText, {begin, end}});
        } else if (JoinsWords(bytes, first, behind)) {
            found.push_back({CommentTrouble::Kind::kJoinsWords,
                             {first, first + 1},
                             {WordBegin(bytes, first), WordEnd(bytes, behind)}});
        }
    });
    return found;
}

std::vector<CommentedHeader> FindCommentedHeaders(std::string_view bytes) {
    std::vector<CommentedHeader> found;
    ForEachComment(bytes, [&](std::size_t begin, std::size_t end) {
        std::string_view comment = bytes.substr(begin, end - begin);
        const auto notBlank = comment.find_first_not_of("; \t\r");
        if (notBlank == comment.npos || comment[notBlank] != '[') return;
        const std::size_t close = comment.find(']', notBlank);
        if (close == comment.npos) return;
        std::string_view word = comment.substr(notBlank + 1, close - notBlank - 1);
        word.remove_prefix(std::min(word.find_first_not_of(" \t"), word.size()));
        word = word.substr(0, word.find_last_not_of(" \t") + 1);
        if (word.size() > 16) return;
        for (std::size_t i = 0; i < compositions::kSectionCount; ++i) {
            const auto section = static_cast<Section>(i);
            if (!IsHeaderOf(std::wstring(word.begin(), word.end()), section)) continue;
            found.push_back({section, {begin + notBlank, begin + close + 1}});
        }
    });
    return found;
}

}  // namespace tarnexctl
