#include "compositions/CompScriptSections.h"
#include "compositions/language/Symbols.h"

namespace compositions {

using namespace std::string_view_literals;

std::int32_t ReadEffects(ScriptCursor& cursor, CompositionDescription& description) {
    if (!cursor.FindHeader(Section::kEffects, R36)) return status::kNoEffects;
    description.mixes.reserve(kFewStatements);  // STRUCTURE may add some
    Pieces& pieces = cursor.Scratch();
    while (cursor.Match(R37, pieces)) {
        if (IsKeyword(pieces[1], L"MIX"sv)) {  // written as a word or as a string
            description.mixes.emplace_back(pieces[0]);
        } else {
            description.effectInstances[UpperName(pieces[0])] = pieces[1];
        }
        cursor.Taken();
    }
    return status::kRead;
}

}  // namespace compositions
