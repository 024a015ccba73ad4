#include <utility>
#include <vector>

#include "compositions/CompScriptSections.h"
#include "compositions/language/Symbols.h"

namespace compositions {
namespace {

using namespace std::string_view_literals;

constexpr std::wstring_view kHermite = L"HERMITE"sv;
constexpr std::wstring_view kKinds[] = {L"LINEAR"sv, L"COSINE"sv, L"CUBIC"sv, kHermite, L"HOLD"sv};

bool IsKind(std::wstring_view word) {
    for (const std::wstring_view kind : kKinds) {
        if (IsKeyword(word, kind)) return true;
    }
    return false;
}

bool IsNumber(std::wstring_view piece) {
    return !piece.empty() && (piece[0] == L'-' || (piece[0] >= L'0' && piece[0] <= L'9'));
}

// Whether two numbers were written behind a kind. Behind them stand the time and the value of the
// next key, the time of the last one, or nothing: so three numbers or more in a row, or two at the
// very end, can only be read one way.
bool HasParameters(const Pieces& pieces, std::size_t next) {
    std::size_t numbers = 0;
    while (numbers < 3 && next + numbers < pieces.size() && IsNumber(pieces[next + numbers])) {
        ++numbers;
    }
    return numbers == 3 || (numbers == 2 && next + numbers == pieces.size());
}

// Reads the keys behind the name and the count. Answers the position of a word that is no kind, or
// 0.
std::size_t ReadKeys(const Pieces& pieces, std::vector<EnvelopeKey>& keys) {
    keys.reserve(pieces.size() / 3);  // a key has two pieces at least and mostly three
    for (std::size_t next = 2; next + 1 < pieces.size();) {
        const std::wstring_view time = pieces[next++];
        std::wstring_view value = L"1.0"sv;
        std::wstring_view parameters[] = {L"0.0"sv, L"0.0"sv};
        if (next + 1 < pieces.size() && IsNumber(pieces[next])) value = pieces[next++];
        if (!IsKind(pieces[next])) return next;
        EnvelopeKey& key = keys.emplace_back();
        key.kind.Assign(pieces[next++]);
        if (HasParameters(pieces, next)) {
            if (key.kind == kHermite) {
                parameters[0] = pieces[next];
                parameters[1] = pieces[next + 1];
            }
            next += 2;  // written behind another kind, they mean nothing
        }
        key.time = time;
        key.value = value;
        key.firstParameter = parameters[0];
        key.secondParameter = parameters[1];
    }
    return 0;
}

}  // namespace

std::int32_t ReadEnvelopes(ScriptCursor& cursor, CompositionDescription& description) {
    if (!cursor.FindHeader(Section::kEnvelopes, R47)) {
        return status::kNoEnvelopes;
    }
    Pieces& pieces = cursor.Scratch();
    while (cursor.Match(R52, pieces)) {
        UpperName name(pieces[0]);
        if (description.envelopes.contains(name)) {
            return cursor.Refused(status::kDefinedTwice, pieces[0]);
        }
        Envelope envelope;
        envelope.count = pieces[1];
        const std::size_t unknown = ReadKeys(pieces, envelope.keys);
        if (unknown != 0) return cursor.Refused(status::kUnknownKind, pieces[unknown]);
        description.envelopes.emplace(std::move(name), std::move(envelope));
        cursor.Taken();
    }
    return status::kRead;
}

}  // namespace compositions
