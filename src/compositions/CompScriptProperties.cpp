#include <string>

#include "compositions/AccessWords.h"
#include "compositions/CompScriptSections.h"
#include "compositions/language/Symbols.h"

namespace compositions {

// The list begins with room for them. Below a kilobyte, memory comes from where it is quickest.
constexpr std::size_t kFewProperties = 6;

// The name is the first piece that is no access word, whichever piece that is: a word in front of
// the name string takes its place, and a name that reads as an access word is one.
std::int32_t ReadProperties(ScriptCursor& cursor, CompositionDescription& description) {
    if (!cursor.FindHeader(Section::kProperties, R29)) {
        return status::kNoProperties;
    }
    Pieces& pieces = cursor.Scratch();
    while (cursor.Match(R30, pieces)) {
        AccessFlags access;
        std::size_t next = 0;
        for (; next < pieces.size(); ++next) {
            const AccessWord word = access.Take(pieces[next]);
            if (word == AccessWord::kRefused) return cursor.Refused(access.Status(), pieces[next]);
            if (word == AccessWord::kNotAnAccessWord) break;
        }
        if (description.properties.empty()) description.properties.reserve(kFewProperties);
        PropertyRecord& property = description.properties.emplace_back();
        property.access = access.Value();
        if (next < pieces.size()) property.name = pieces[next];
        if (next + 1 < pieces.size()) property.value = pieces[next + 1];
        cursor.Taken();
    }
    return status::kRead;
}

}  // namespace compositions
