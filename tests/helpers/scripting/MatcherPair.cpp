#include "helpers/scripting/MatcherPair.h"

#include <sstream>
#include <string_view>
#include <utility>

namespace {

// Everything that a caller can see after an operation.
struct Outcome {
    bool found = false;
    std::size_t position = 0;
    std::vector<std::wstring> pieces;
    std::uint32_t lastKind = 0;
    std::wstring lastText;

    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    out << (outcome.found ? "found" : "not found") << ", position " << outcome.position
        << ", last lexem " << outcome.lastKind << ", pieces";
    for (const std::wstring& piece : outcome.pieces) {
        out << " <";
        for (const wchar_t character : piece) {
            if (character >= L' ' && character <= L'~') {
                out << static_cast<char>(character);
            } else {
                out << "\\" << static_cast<unsigned long>(character);
            }
        }
        out << '>';
    }
    return out;
}

}  // namespace

MatcherPair::MatcherPair(const std::string& bytes, plain::Interpreter& plain)
    : real_(std::string_view(bytes)), plain_(plain) {
    plain_.TakeText(plain::Preprocess(bytes));
}

void MatcherPair::Start(std::size_t position) {
    real_.SetPosition(position);
    plain_.position = position;
}

bool MatcherPair::SameText(const std::string& bytes) {
    difference_ = "the texts";
    return real_.Text() == plain::Preprocess(bytes);
}

bool MatcherPair::SameMatch(std::uint32_t symbol) {
    std::vector<std::wstring> pieces{L"from before"};
    const bool found = real_.get_expression(symbol, pieces);
    std::vector<std::wstring> plainPieces{L"from before"};
    const bool plainFound = plain_.get_expression(symbol, plainPieces);
    return Same(found, pieces, plainFound, plainPieces);
}

bool MatcherPair::SameViews(std::uint32_t symbol) {
    helpers::scripting::Pieces pieces;
    const bool found = real_.get_expression(symbol, pieces);
    std::vector<std::wstring> plainPieces;
    const bool plainFound = plain_.get_expression(symbol, plainPieces);
    return Same(found, {pieces.begin(), pieces.end()}, plainFound, plainPieces);
}

bool MatcherPair::SameFind(std::uint32_t symbol, bool peek) {
    const bool found = real_.find_expression(symbol, peek);
    const bool plainFound = plain_.find_expression(symbol, peek);
    return Same(found, {}, plainFound, {});
}

bool MatcherPair::SameLexem(std::uint32_t kind) {
    std::wstring text = L"from before";
    const bool found = real_.get_lexem(kind, text);
    std::wstring plainText = L"from before";
    const bool plainFound = plain_.get_lexem(kind, plainText);
    return Same(found, {text}, plainFound, {plainText});
}

bool MatcherPair::Same(bool found, const std::vector<std::wstring>& pieces, bool plainFound,
                       const std::vector<std::wstring>& plainPieces) {
    const Outcome real{found, real_.Position(), pieces, real_.LastLexemKind(),
                       std::wstring(real_.LastLexemText())};
    const Outcome plain{plainFound, plain_.position, plainPieces, plain_.lastKind, plain_.lastText};
    if (real == plain) return true;
    std::ostringstream words;
    words << real << "; plainly " << plain;
    difference_ = words.str();
    return false;
}
