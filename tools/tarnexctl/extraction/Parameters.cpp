// PROPERTIES, MAPPING, ENVELOPES and TIMELINE.

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <tuple>

#include "compositions/AccessWords.h"
#include "compositions/language/Symbols.h"
#include "extraction/Sections.h"

namespace tarnexctl {
namespace {

using namespace compositions;
using Pieces = std::vector<std::wstring>;

struct KnownWord {
    std::uint32_t flag;
    const wchar_t* word;
};
constexpr KnownWord kWrittenAccess[] = {{kAccessRead, L"READ"},
                                        {kAccessWrite, L"WRITE"},
                                        {kAccessExpensive, L"EXPENSIVE"},
                                        {kAccessEnveloped, L"ENVELOPED"},
                                        {kAccessNoInterpolation, L"NO_INTERPOLATION"}};
constexpr const char* kNoAccess = "no access words set these flags";

constexpr std::array<std::wstring_view, 5> kKeyKinds = {L"LINEAR", L"COSINE", L"CUBIC", L"HERMITE",
                                                        L"HOLD"};

bool SetsAccess(std::wstring_view word) {
    return AccessFlags().Take(word) != AccessWord::kNotAnAccessWord;
}

// The words that set exactly these flags.
std::optional<Pieces> WordsOf(std::uint32_t access) {
    Pieces words;
    AccessFlags flags;
    for (const KnownWord& known : kWrittenAccess) {
        if ((access & known.flag) == 0) continue;
        words.push_back(known.word);
        (void)flags.Take(known.word);  // a refused one leaves the flags different
    }
    if (flags.Value() != access) return std::nullopt;
    return words;
}

std::wstring Joined(const Pieces& words) {
    std::wstring text;
    for (const std::wstring& word : words) text += word + L" ";
    return text;
}

// A property statement that may give the record: its text and what the grammar makes of it.
struct PropertyForm {
    std::wstring text;
    Pieces pieces;
};

// Besides the plain form, those by which a script's mistakes become records: a word that is no
// access word takes the name's place and the next piece is the value, and behind names that read as
// access words the value is the name.
std::vector<PropertyForm> FormsOf(const Pieces& words, const PropertyRecord& record) {
    const std::wstring start = Joined(words);
    const auto pieces = [&](std::initializer_list<std::wstring> rest) {
        Pieces all = words;
        all.insert(all.end(), rest);
        return all;
    };
    const std::wstring& name = record.name;
    const std::wstring& value = record.value;
    std::vector<PropertyForm> forms;
    if (!SetsAccess(name)) {
        forms.push_back({start + QuotedText(name) + L" = " + value, pieces({name, value})});
        // An empty text leaves a further piece, which nothing takes.
        forms.push_back({start + QuotedText(name) + L" = " + value, pieces({name, value, L""})});
        forms.push_back(
            {start + name + L" " + QuotedText(value) + L" = 0", pieces({name, value, L"0"})});
        forms.push_back(
            {start + name + L" " + value + L" \"\" = 0", pieces({name, value, L"", L"0"})});
    }
    if (value.empty()) {
        forms.push_back({start + L"\"READ\" = " + name, pieces({L"READ", name})});
        forms.push_back({start + L"\"READ\" = " + name, pieces({L"READ", name, L""})});
    }
    return forms;
}

void AddProperty(SectionText& section, const PropertyRecord& record) {
    const std::string where = Where("property", record.name);
    const std::optional<Pieces> words = WordsOf(record.access);
    if (!words) return section.AddGap(where, kNoAccess);
    const std::vector<PropertyForm> forms = FormsOf(*words, record);
    for (const PropertyForm& form : forms) {
        if (!ReadsAs(R30, form.text, form.pieces)) continue;
        section.Add(R30, form.text, form.pieces, where);
        return;
    }
    if (forms.empty()) return section.AddGap(where, "a name that is an access word reads as one");
    section.Add(R30, forms[0].text, forms[0].pieces, where);  // notes the gap
}

// What stands before and behind the key's kind.
std::string KeyGap(const EnvelopeKey& key, bool isLast) {
    if (std::find(kKeyKinds.begin(), kKeyKinds.end(), key.kind.View()) == kKeyKinds.end()) {
        return "a key of unknown kind";
    }
    if (isLast && key.value != L"1.0") return "the last key's value is always 1.0";
    const bool hasParameters = key.firstParameter != L"0.0" || key.secondParameter != L"0.0";
    if (hasParameters && key.kind != std::wstring_view(L"HERMITE")) {
        return "HERMITE keys alone have parameters";
    }
    return "";
}

void AddKey(const EnvelopeKey& key, bool isLast, std::wstring& statement, Pieces& pieces) {
    const auto add = [&](const std::wstring& piece) {
        statement += L", " + piece;
        pieces.push_back(piece);
    };
    statement += L", {" + std::wstring(key.time);
    pieces.push_back(key.time);
    if (!isLast) add(key.value);
    add(std::wstring(key.kind.View()));
    if (key.firstParameter != L"0.0" || key.secondParameter != L"0.0") {
        add(key.firstParameter);
        add(key.secondParameter);
    }
    statement += L"}";
}

bool AddEnvelope(SectionText& section, const UpperName& name, const Envelope& envelope) {
    const std::string where = Where("envelope", name.View());
    std::string gap = envelope.keys.empty() ? "an envelope has at least one key" : "";
    if (!IsUpper(name.View())) gap = kNotUpper;
    Pieces pieces{std::wstring(name.View()), envelope.count};
    std::wstring statement = pieces[0] + L" = {" + std::wstring(envelope.count) + L"}";
    for (std::size_t i = 0; i < envelope.keys.size() && gap.empty(); ++i) {
        const bool isLast = i + 1 == envelope.keys.size();
        gap = KeyGap(envelope.keys[i], isLast);
        AddKey(envelope.keys[i], isLast, statement, pieces);
    }
    if (gap.empty()) return section.Add(R52, statement, pieces, where);
    section.AddGap(where, gap);
    return false;
}

// INSTANCE."property" = value, where the value leaves one piece.
void AddTimeline(SectionText& section, const UpperName& instance, const std::wstring& property,
                 const std::wstring& written, const std::wstring& value) {
    const std::string where = Where("timeline of", instance.View()) + Where(", property", property);
    if (!IsUpper(instance.View()) || !IsUpper(property)) return section.AddGap(where, kNotUpper);
    const std::wstring word(instance.View());
    section.Add(R55, word + L"." + QuotedText(property) + L" = " + written, {word, property, value},
                where);
}

// The value as its kind is written.
std::wstring Written(const TimelineEntry& entry) {
    const std::wstring value = entry.value;
    if (entry.kind == kString) return QuotedText(value);
    return entry.kind == kVariable ? L"%" + value + L"%" : value;
}

std::uint32_t RuleOf(const TimelineEntry& entry) {
    if (entry.kind == kString) return R8;
    return entry.kind == kVariable ? R20 : R5;
}

}  // namespace

std::string PropertiesText(const CompositionDescription& description, Gaps& gaps) {
    SectionText section(gaps);
    for (const PropertyRecord& record : description.properties) AddProperty(section, record);
    return section.Text();
}

std::string MappingText(const CompositionDescription& description, const DeclaredNames& names,
                        Gaps& gaps) {
    SectionText section(gaps);
    std::set<std::tuple<UpperName, UpperName, std::wstring>> taken;
    for (const Mapping& mapping : description.mappings) {
        const std::wstring property(mapping.property.View());
        const std::wstring instance(mapping.instance.View());
        const std::string where = Where("mapping of", property);
        const std::optional<Pieces> words = WordsOf(mapping.access);
        if (!words) {
            section.AddGap(where, kNoAccess);
        } else if (!IsUpper(property)) {
            section.AddGap(where, kNotUpper);
        } else if (!description.effectInstances.contains(mapping.instance) ||
                   !names.contains(mapping.instance)) {
            section.AddGap(where, "its target is no effect of the script");
        } else if (!taken.emplace(mapping.property, mapping.instance, mapping.targetProperty)
                        .second) {
            section.AddGap(where, "a script maps nothing twice");
        } else {
            Pieces pieces = *words;
            pieces.insert(pieces.end(), {property, instance, mapping.targetProperty});
            section.Add(R46,
                        Joined(*words) + QuotedText(property) + L" = " + instance + L"." +
                            QuotedText(mapping.targetProperty),
                        pieces, where);
        }
    }
    return section.Text();
}

std::string EnvelopesText(const CompositionDescription& description, DeclaredNames& envelopes,
                          Gaps& gaps) {
    SectionText section(gaps);
    for (const auto& [name, envelope] : description.envelopes) {
        if (AddEnvelope(section, name, envelope)) envelopes.insert(name);
    }
    return section.Text();
}

std::string TimelineText(const CompositionDescription& description, const DeclaredNames& envelopes,
                         Gaps& gaps) {
    SectionText section(gaps);
    std::set<std::pair<UpperName, std::wstring>> mapped;
    for (const Mapping& mapping : description.mappings) {
        mapped.emplace(mapping.instance, UpperText(mapping.targetProperty));
    }
    for (const TimelineEntry& entry : description.timelineEntries) {
        const std::string where = Where("timeline of", entry.instance.View());
        if (entry.kind > kVariable) {
            section.AddGap(where, "a value of unknown kind");
        } else if (!ReadsAs(RuleOf(entry), Written(entry), {entry.value})) {
            section.AddGap(where, "no value of its kind reads so");
        } else {
            AddTimeline(section, entry.instance, entry.property, Written(entry), entry.value);
        }
    }
    for (const TimelineEvent& event : description.timelineEvents) {
        const std::string where = Where("timeline of", event.instance.View());
        if (!envelopes.contains(event.envelope)) {
            section.AddGap(where, "the script has no such envelope");
        } else if (mapped.contains({event.instance, event.property})) {
            section.AddGap(where, "an envelope cannot drive what MAPPING drives");
        } else {
            const std::wstring envelope(event.envelope.View());
            AddTimeline(section, event.instance, event.property, envelope, envelope);
        }
    }
    return section.Text();
}

}  // namespace tarnexctl
