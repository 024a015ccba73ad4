#include <utility>

#include "compositions/CompScriptSections.h"
#include "compositions/language/Symbols.h"

namespace compositions {
namespace {

// Pieces: the source's name, then the parts of its path.
MediaSource MakeMediaSource(MediaKind kind, const Pieces& pieces, const RegistryValues& values) {
    MediaSource source;
    source.kind = kind;
    // A path of one part stays as written and is never a registry value; the parts of a longer one
    // are upper-cased and looked up. Scripts rely on both.
    if (pieces.size() < 3) {
        source.items.emplace_back().text = pieces[1];
        return source;
    }
    source.items.reserve(pieces.size() - 1);
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        MediaItem& item = source.items.emplace_back();
        AssignUpper(pieces[i], item.text);
        item.isRegistryValue = !values.empty() && values.contains(UpperName::Verbatim(item.text));
    }
    return source;
}

}  // namespace

std::int32_t ReadSources(ScriptCursor& cursor, CompositionDescription& description) {
    if (!cursor.FindHeader(Section::kSources, R32)) return status::kNoSources;
    Pieces& pieces = cursor.Scratch();
    for (;;) {
        const TextForm form = cursor.NextAssignment();
        const bool isWord = CanBe(form, TextForm::kWord);
        if (CanBe(form, TextForm::kNumber) && cursor.Match(R56, pieces)) {
            description.numberedInputs[UpperName(pieces[0])] = NumberOf(pieces[1]);
        } else if (isWord && cursor.Match(R33, pieces)) {
            description.inputs.emplace_back(pieces[0]);
        } else if (isWord && cursor.Match(R34, pieces)) {
            description.mediaSources.insert_or_assign(
                UpperName(pieces[0]), MakeMediaSource(kBitmap, pieces, description.registryValues));
        } else if (isWord && cursor.Match(R35, pieces)) {
            description.mediaSources.insert_or_assign(
                UpperName(pieces[0]), MakeMediaSource(kMovie, pieces, description.registryValues));
        } else {
            return status::kRead;
        }
        cursor.Taken();
    }
}

}  // namespace compositions
