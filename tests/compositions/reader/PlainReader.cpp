#include "compositions/reader/PlainReader.h"

#include <algorithm>
#include <cwchar>

using compositions::StructureNode;
using compositions::UpperName;

namespace {

using Strings = std::vector<std::wstring>;

std::wstring Upper(std::wstring text) {
    for (wchar_t& c : text) {
        if (c >= L'a' && c <= L'z') c -= 32;
    }
    return text;
}

// An upper-cased copy that ends at its first zero.
std::wstring Word(const std::wstring& text) {
    return Upper(text).c_str();
}

UpperName Name(const std::wstring& text) {
    return UpperName::Verbatim(Upper(text));
}

int Integer(const std::wstring& text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == L' ' || (text[i] >= 9 && text[i] <= 13))) ++i;
    std::string digits;
    if (i < text.size() && (text[i] == L'-' || text[i] == L'+')) digits += char(text[i++]);
    while (i < text.size() && text[i] >= L'0' && text[i] <= L'9') digits += char(text[i++]);
    const long double value = std::strtold(digits.c_str(), nullptr);
    return value > 2147483647.0L    ? 2147483647
           : value < -2147483648.0L ? -2147483647 - 1
                                    : static_cast<int>(value);
}

template <typename List, typename Item>
bool Has(const List& list, const Item& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

template <typename Map>
bool HasKey(const Map& map, const UpperName& name) {
    for (const auto& entry : map) {
        if (entry.first == name) return true;
    }
    return false;
}

class Reader {
public:
    explicit Reader(const PlainToolkit& toolkit) : t(toolkit) {}

    PlainResult Read() {
        r.sections.assign(8, -1);
        for (int section = 0; section < 4; ++section) {
            const int status = ReadSection(section);
            r.sections[section] = status;
            if (status != 0) return Done(status);
        }
        for (int section = 4; section < 8; ++section) r.sections[section] = ReadSection(section);
        if (d.isFilter && d.inputs.size() + d.numberedInputs.size() != 1) return Done(20);
        return Done(0);
    }

private:
    PlainResult Done(int status) {
        r.readStatus = status;
        return std::move(r);
    }

    int ReadSection(int section) {
        t.setPosition(0);
        switch (section) {
            case 0:
                return t.findExpression(26) ? Setup() : 1;
            case 1:
                return t.findExpression(32) ? Sources() : 4;
            case 2:
                return t.findExpression(36) ? Effects() : 5;
            case 3:
                return t.findExpression(38) ? Structure() : 6;
            case 4:
                return t.findExpression(29) ? Properties() : 2;
            case 5:
                return t.findExpression(42) ? MappingSection() : 9;
            case 6:
                return t.findExpression(47) ? Envelopes() : 15;
            default:
                return t.findExpression(53) ? Timeline() : 18;
        }
    }

    int Setup() {
        Strings p;
        for (;;) {
            if (t.getExpression(16, p)) {
                if (Word(p[0]) == L"NAME") {
                    d.name = p[1];
                } else if (Word(p[0]) == L"CATEGORY") {
                    d.category = p[1];
                }
            } else if (t.getExpression(57, p)) {
                if (Word(p[0]) == L"SPEED") d.speed = Integer(p[1]);
            } else if (t.getExpression(17, p)) {
                if (Word(p[0]) == L"SWAP") {
                    d.swap = true;
                } else if (Word(p[0]) == L"IS_FILTER") {
                    if (Word(p[1]) != L"TRUE" && Word(p[1]) != L"FALSE") return 12;
                    d.isFilter = Word(p[1]) == L"TRUE";
                }
            } else if (t.getExpression(28, p)) {
                if (p.size() < 4 || p.size() > 5 || Word(p[1]) != L"REGS") continue;
                d.registryValues[Name(p[0])] = {p[2], p[3], p.size() == 5 ? p[4] : L""};
            } else {
                break;
            }
        }
        r.titleTraced = !d.name.empty() && !d.category.empty();
        return r.titleTraced ? 0 : 3;
    }

    compositions::MediaSource Media(std::uint32_t kind, const Strings& p) {
        compositions::MediaSource media;
        media.kind = kind;
        if (p.size() < 3) {
            media.items = {{false, p[1]}};
            return media;
        }
        for (std::size_t i = 1; i < p.size(); ++i) {
            media.items.push_back({HasKey(d.registryValues, Name(p[i])), Upper(p[i])});
        }
        return media;
    }

    int Sources() {
        Strings p;
        for (;;) {
            if (t.getExpression(56, p)) {
                d.numberedInputs[Name(p[0])] = Integer(p[1]);
            } else if (t.getExpression(33, p)) {
                d.inputs.push_back(Name(p[0]));
            } else if (t.getExpression(34, p)) {
                d.mediaSources[Name(p[0])] = Media(0, p);
            } else if (t.getExpression(35, p)) {
                d.mediaSources[Name(p[0])] = Media(1, p);
            } else {
                return 0;
            }
        }
    }

    int Effects() {
        Strings p;
        while (t.getExpression(37, p)) {
            if (Word(p[1]) == L"MIX") {
                d.mixes.push_back(Name(p[0]));
            } else {
                d.effectInstances[Name(p[0])] = p[1];
            }
        }
        return 0;
    }

    UpperName AutomaticMix() {
        std::size_t number = d.mixes.size();
        std::wstring candidate = L"mix" + std::to_wstring(number);
        while (Has(d.mixes, UpperName::Verbatim(candidate))) {
            candidate = L"mix" + std::to_wstring(++number);
        }
        d.mixes.push_back(Name(candidate));
        return d.mixes.back();
    }

    struct Lexem {
        int kind;
        std::wstring text;
    };

    std::vector<Lexem> CollectLexems() {
        std::vector<Lexem> lexems;
        for (;;) {
            int found = -1;
            std::wstring text;
            for (int kind : {22, 40, 41, 6}) {
                const std::size_t before = t.position();
                if (t.getLexem(kind, text)) {
                    found = kind;
                    break;
                }
                t.setPosition(before);
            }
            if (found < 0) return lexems;
            lexems.push_back({found, text});
        }
    }

    // Nodes up to the matching ")", or to the end.
    int Build(const std::vector<Lexem>& lexems, std::size_t& i, int depth,
              const std::vector<UpperName>& mixes, std::vector<StructureNode>& out) {
        bool afterName = false;
        for (; i < lexems.size(); ++i) {
            if (lexems[i].kind == 40) {
                if (!afterName) return 12;
                ++i;
                const int status = Build(lexems, i, depth + 1, mixes, out.back().inputs);
                if (status != 0) return status;
                afterName = false;
            } else if (lexems[i].kind == 41) {
                return depth == 0 ? 12 : 0;
            } else if (lexems[i].kind == 6) {
                UpperName name = Name(lexems[i].text);
                if (Word(lexems[i].text) == L"MIX") {
                    name = AutomaticMix();
                } else if (!HasKey(d.effectInstances, name) && !Has(d.inputs, name) &&
                           !HasKey(d.mediaSources, name) && !HasKey(d.numberedInputs, name) &&
                           !Has(mixes, name)) {
                    return 8;
                }
                out.emplace_back(name);
                afterName = true;
            } else {
                afterName = false;
            }
        }
        return depth == 0 ? 0 : 12;
    }

    int Structure() {
        Strings p;
        if (!t.getExpression(39, p)) return 7;
        const std::vector<Lexem> lexems = CollectLexems();
        std::vector<StructureNode> roots;
        std::size_t i = 0;
        const std::vector<UpperName> declaredMixes = d.mixes;
        const int status = Build(lexems, i, 0, declaredMixes, roots);
        if (status != 0) return status;
        if (roots.size() != 1) ++r.assertions;
        if (!roots.empty()) d.structure = roots.back();
        return 0;
    }

    // 0: taken; 1: no access word; 10 or 11: refused.
    static int Access(const std::wstring& word, std::uint32_t& flags) {
        const std::wstring w = Word(word);
        if (w == L"READ") {
            flags |= 1;
        } else if (w == L"WRITE") {
            flags |= 2;
        } else if (w == L"EXPENSIVE") {
            if (flags & 8) return 10;
            flags |= 4;
        } else if (w == L"ENVELOPED") {
            if (flags & 4) return 11;
            flags |= 8 | 2;
        } else if (w == L"NO_INTERPOLATION") {
            flags |= 32;
        } else {
            return 1;
        }
        return 0;
    }

    int Properties() {
        Strings p;
        while (t.getExpression(30, p)) {
            std::uint32_t flags = 1;
            while (!p.empty()) {
                const int result = Access(p[0], flags);
                if (result >= 10) return result;
                if (result == 1) break;
                p.erase(p.begin());
            }
            p.resize(std::max<std::size_t>(p.size(), 2));
            d.properties.push_back({flags, p[0], p[1]});
        }
        return 0;
    }

    int MappingSection() {
        Strings all;
        for (;;) {
            const std::size_t start = t.position();
            if (!t.getExpression(46, all)) return 0;
            const std::size_t end = t.position();
            t.setPosition(start);
            Strings words;
            Strings targets;
            std::wstring equals;
            t.getExpression(43, words);
            t.getLexem(18, equals);
            t.getExpression(45, targets);
            if (t.position() != end) return -2;
            std::uint32_t flags = 1;
            for (std::size_t i = 0; i + 1 < words.size(); ++i) {
                const int result = Access(words[i], flags);
                if (result >= 10) return result;
            }
            for (int i = static_cast<int>(targets.size()) - 2; i >= 0; i -= 2) {
                const compositions::Mapping record{Name(words.back()), flags, Name(targets[i]),
                                                   targets[i + 1]};
                if (!HasKey(d.effectInstances, record.instance)) return 13;
                if (Has(d.mappings, record)) return 14;
                d.mappings.push_back(record);
                r.mappingAccess.push_back(flags);
            }
        }
    }

    int Envelopes() {
        Strings all;
        for (;;) {
            const std::size_t start = t.position();
            if (!t.getExpression(52, all)) return 0;
            const std::size_t end = t.position();
            t.setPosition(start);
            std::wstring name;
            std::wstring mark;
            Strings p;
            t.getLexem(6, name);
            if (HasKey(d.envelopes, Name(name))) return 14;
            t.getLexem(18, mark);
            compositions::Envelope envelope;
            t.getExpression(48, p);
            envelope.count = p[0];
            while (t.position() < end) {
                t.getLexem(22, mark);
                const bool isLast = t.getExpression(50, p);
                if (!isLast && !t.getExpression(49, p)) return -2;
                if (isLast) p.insert(p.begin() + 1, L"1.0");
                compositions::EnvelopeKey key{p[0], p[1], Name(p[2]), L"0.0", L"0.0"};
                const std::wstring kind = Word(p[2]);
                if (kind != L"LINEAR" && kind != L"COSINE" && kind != L"CUBIC" &&
                    kind != L"HERMITE" && kind != L"HOLD") {
                    return 17;
                }
                if (kind == L"HERMITE" && p.size() == 5) {
                    key.firstParameter = p[3];
                    key.secondParameter = p[4];
                }
                envelope.keys.push_back(key);
            }
            d.envelopes[Name(name)] = envelope;
        }
    }

    bool IsMapped(const UpperName& instance, const std::wstring& property) {
        for (const auto& mapping : d.mappings) {
            if (mapping.instance == instance && Upper(mapping.targetProperty) == property) {
                return true;
            }
        }
        return false;
    }

    int Timeline() {
        Strings targets;
        Strings p;
        while (t.getExpression(54, targets)) {
            if (t.getExpression(6, p)) {
                if (!HasKey(d.envelopes, Name(p[0]))) return 12;
                for (std::size_t i = 0; i < targets.size(); i += 2) {
                    if (IsMapped(Name(targets[i]), Upper(targets[i + 1]))) return 19;
                }
                for (std::size_t i = 0; i < targets.size(); i += 2) {
                    d.timelineEvents.push_back(
                        {Name(targets[i]), Upper(targets[i + 1]), Name(p[0])});
                }
                continue;
            }
            std::uint32_t kind = 0;
            if (t.getExpression(8, p)) {
                kind = 1;
            } else if (t.getExpression(5, p) || t.getExpression(1, p)) {
                kind = 0;
            } else if (t.getExpression(20, p)) {
                kind = 2;
            } else {
                continue;
            }
            for (std::size_t i = 0; i < targets.size(); i += 2) {
                d.timelineEntries.push_back({Name(targets[i]), Upper(targets[i + 1]), p[0], kind});
            }
        }
        return 0;
    }

    const PlainToolkit& t;
    PlainResult r;
    compositions::CompositionDescription& d = r.description;
};

}  // namespace

PlainResult ReadPlainly(const PlainToolkit& toolkit) {
    return Reader(toolkit).Read();
}
