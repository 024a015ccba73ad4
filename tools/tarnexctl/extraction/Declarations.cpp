// SETUP, SOURCES and EFFECTS.

#include "compositions/language/Symbols.h"
#include "extraction/Sections.h"

namespace tarnexctl {
namespace {

using namespace compositions;

void AddText(SectionText& section, const wchar_t* keyword, const char* what,
             const std::wstring& text) {
    if (text.empty()) return section.AddGap(what, "it is empty, and a script needs one");
    section.Add(R16, std::wstring(keyword) + L" = " + QuotedText(text), {keyword, text}, what);
}

void AddRegistryValue(SectionText& section, const UpperName& name, const RegistryValue& value) {
    const std::string where = Where("registry value", name.View());
    if (!IsUpper(name.View())) return section.AddGap(where, kNotUpper);
    std::vector<std::wstring> pieces{std::wstring(name.View()), L"REGS", value.first, value.second};
    std::wstring statement = L"%" + pieces[0] + L"% = REGS : {" + QuotedText(value.first) + L", " +
                             QuotedText(value.second);
    if (!value.third.empty()) {
        pieces.push_back(value.third);
        statement += L", " + QuotedText(value.third);
    }
    section.Add(R28, statement + L"}", pieces, where);
}

// How a path's part is written: as a text, or as a variable where no text reads so.
std::wstring PathPart(const MediaItem& item) {
    if (item.isRegistryValue || !ReadsAs(R8, QuotedText(item.text), {item.text})) {
        return L"%" + std::wstring(item.text) + L"%";
    }
    return QuotedText(item.text);
}

// Why a source with these items is none that a script declares; empty when one may.
std::string ItemsGap(const std::vector<MediaItem>& items, const RegistryValues& values) {
    if (items.empty()) return "a path has at least one part";
    if (items.size() == 1) {
        return items[0].isRegistryValue ? "a path of one part names no registry value" : "";
    }
    for (const MediaItem& item : items) {
        if (!IsUpper(item.text)) return "a longer path's parts are in upper case";
        if (item.isRegistryValue != values.contains(UpperName(item.text))) {
            return "a longer path's parts name every registry value there is";
        }
    }
    return "";
}

bool AddMediaSource(SectionText& section, const UpperName& name, const MediaSource& source,
                    const RegistryValues& values) {
    const std::string where = Where("media source", name.View());
    std::string gap = ItemsGap(source.items, values);
    if (!IsUpper(name.View())) gap = kNotUpper;
    if (source.kind > kMovie) gap = "its kind is neither BITMAP nor MOVIE";
    if (!gap.empty()) {
        section.AddGap(where, gap);
        return false;
    }
    std::vector<std::wstring> pieces{std::wstring(name.View())};
    const bool isMovie = source.kind == kMovie;
    std::wstring statement = pieces[0] + (isMovie ? L" = MOVIE : " : L" = BITMAP : ");
    for (const MediaItem& item : source.items) {
        statement += (pieces.size() > 1 ? L" + " : L"") + PathPart(item);
        pieces.push_back(item.text);
    }
    return section.Add(isMovie ? R35 : R34, statement, pieces, where);
}

bool AddMix(SectionText& section, const UpperName& name) {
    const std::string where = Where("mix", name.View());
    if (!IsUpper(name.View())) {
        section.AddGap(where, kNotUpper);
        return false;
    }
    const std::wstring word(name.View());
    return section.Add(R37, word + L" = MIX", {word, L"MIX"}, where);
}

bool AddEffect(SectionText& section, const UpperName& name, const std::wstring& effect) {
    const std::string where = Where("effect instance", name.View());
    if (!IsUpper(name.View()) || IsKeyword(effect, L"MIX")) {
        section.AddGap(where, IsUpper(name.View()) ? "an effect called MIX reads as a mixing node"
                                                   : kNotUpper);
        return false;
    }
    const std::wstring word(name.View());
    return section.Add(R37, word + L" = " + QuotedText(effect), {word, effect}, where);
}

}  // namespace

std::string SetupText(const CompositionDescription& description, Gaps& gaps) {
    SectionText section(gaps);
    AddText(section, L"NAME", "the name", description.name);
    AddText(section, L"CATEGORY", "the category", description.category);
    if (description.speed != 0) {
        const std::wstring speed = std::to_wstring(description.speed);
        section.Add(R57, L"SPEED = " + speed, {L"SPEED", speed}, "the speed");
    }
    if (description.isFilter &&
        description.inputs.size() + description.numberedInputs.size() != 1) {
        section.AddGap("the filter", "a script's filter has exactly one input");
    } else if (description.isFilter) {
        section.Add(R17, L"IS_FILTER = TRUE", {L"IS_FILTER", L"TRUE"}, "the filter");
    }
    if (description.swap) section.Add(R17, L"SWAP = TRUE", {L"SWAP", L"TRUE"}, "the swap");
    for (const auto& [name, value] : description.registryValues) {
        AddRegistryValue(section, name, value);
    }
    return section.Text();
}

std::string SourcesText(const CompositionDescription& description, DeclaredNames& names,
                        Gaps& gaps) {
    SectionText section(gaps);
    for (const UpperName& name : description.inputs) {
        const std::string where = Where("input", name.View());
        const std::wstring word(name.View());
        if (!IsUpper(word)) {
            section.AddGap(where, kNotUpper);
        } else if (section.Add(R33, word + L" = INPUT", {word}, where)) {
            names.insert(name);
        }
    }
    for (const auto& [name, number] : description.numberedInputs) {
        const std::string where = Where("numbered input", name.View());
        const std::wstring word(name.View());
        const std::wstring text = std::to_wstring(number);
        if (!IsUpper(word)) {
            section.AddGap(where, kNotUpper);
        } else if (section.Add(R56, std::wstring(word).append(L" = ").append(text), {word, text},
                               where)) {
            names.insert(name);
        }
    }
    for (const auto& [name, source] : description.mediaSources) {
        if (AddMediaSource(section, name, source, description.registryValues)) names.insert(name);
    }
    return section.Text();
}

std::string EffectsText(const CompositionDescription& description, std::size_t firstMade,
                        DeclaredNames& names, Gaps& gaps) {
    SectionText section(gaps);
    for (const auto& [name, effect] : description.effectInstances) {
        if (AddEffect(section, name, effect)) names.insert(name);
    }
    for (std::size_t i = 0; i < firstMade; ++i) {
        if (AddMix(section, description.mixes[i])) names.insert(description.mixes[i]);
    }
    return section.Text();
}

}  // namespace tarnexctl
