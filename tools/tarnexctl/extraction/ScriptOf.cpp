#include "extraction/ScriptOf.h"

#include <cstdint>
#include <string_view>
#include <vector>

#include "archives/ArchiveReading.h"
#include "compositions/ArchiveBody.h"
#include "compositions/CompScript.h"
#include "extraction/SectionOrder.h"
#include "extraction/Sections.h"

namespace tarnexctl {
namespace {

using compositions::CompositionDescription;
using compositions::Section;

// A section that need not be there is left out when it is empty.
std::optional<std::string> Optional(std::string text) {
    if (text.empty()) return std::nullopt;
    return text;
}

SectionTexts Write(const CompositionDescription& description, std::size_t firstMade, Gaps& gaps) {
    SectionTexts texts;
    const auto at = [&texts](Section section) -> std::optional<std::string>& {
        return texts[static_cast<std::size_t>(section)];
    };
    DeclaredNames names;
    DeclaredNames effects;
    DeclaredNames envelopes;
    at(Section::kSetup) = SetupText(description, gaps);
    at(Section::kSources) = SourcesText(description, names, gaps);
    at(Section::kEffects) = EffectsText(description, firstMade, effects, gaps);
    names.insert(effects.begin(), effects.end());
    at(Section::kStructure) = StructureText(description, firstMade, names, gaps);
    at(Section::kProperties) = Optional(PropertiesText(description, gaps));
    at(Section::kMapping) = Optional(MappingText(description, effects, gaps));
    at(Section::kEnvelopes) = Optional(EnvelopesText(description, envelopes, gaps));
    at(Section::kTimeline) = Optional(TimelineText(description, envelopes, gaps));
    return texts;
}

// The bytes of each of an archive's fields.
std::vector<std::string> FieldsOf(const CompositionDescription& description) {
    std::string bytes;
    compositions::SaveArchiveBody(description, bytes);
    std::vector<std::uint64_t> offsets;
    CompositionDescription same;
    offsets.push_back(compositions::LoadArchiveBody(bytes, same, &offsets));
    std::vector<std::string> fields;
    for (std::size_t i = 0; i + 1 < offsets.size(); ++i) {
        fields.push_back(bytes.substr(offsets[i], offsets[i + 1] - offsets[i]));
    }
    return fields;
}

// What reads differently though no gap was noted. Compared as an archive holds it, since no more of
// a description ever leaves the library.
void NoteDifferences(const CompositionDescription& wanted, const std::string& script, Gaps& gaps) {
    const compositions::CompositionScript read{std::string_view(script)};
    const std::vector<std::string> expected = FieldsOf(wanted);
    const std::vector<std::string> actual = FieldsOf(read.GetDescription());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (expected[i] != actual[i]) {
            gaps.push_back({std::string("the ") + kArchiveFields.at(i), "no script reads to it"});
        }
    }
    if (gaps.empty() && read.GetReadStatus() != compositions::status::kRead) {
        gaps.push_back({"the whole", compositions::ReadStatusText(read.GetReadStatus())});
    }
}

}  // namespace

ExtractedScript ScriptOf(const CompositionDescription& description) {
    ExtractedScript extracted;
    SectionTexts texts = Write(description, FirstMadeMix(description), extracted.gaps);
    if (!extracted.gaps.empty()) {
        // A declared mix that is left out would give those that STRUCTURE makes other numbers.
        extracted.gaps.clear();
        texts = Write(description, description.mixes.size(), extracted.gaps);
    }
    std::optional<std::string> script = InOrder(texts);
    if (!script) {
        extracted.gaps.push_back({"texts of two sections", "each holds the other's header"});
        return extracted;
    }
    extracted.bytes = std::move(*script);
    if (extracted.gaps.empty()) NoteDifferences(description, extracted.bytes, extracted.gaps);
    return extracted;
}

}  // namespace tarnexctl
