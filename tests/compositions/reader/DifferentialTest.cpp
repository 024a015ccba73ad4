// The reader against the plain one over the plain matcher, on scripts put together at random:
// mostly well-formed statements, with damage of every sort. Every status is met many times.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <utility>
#include <vector>

#include "compositions/ReadStatus.h"
#include "compositions/reader/PlainComparison.h"

using compositions::Section;

namespace {

// A system that is run in an emulator gets fewer.
constexpr int kGeneratedScripts = TARNEX_GENERATED_SCRIPTS;

class ScriptMaker {
public:
    explicit ScriptMaker(std::uint32_t seed) : random_(seed) {}

    // Half the scripts are such that their optional sections are reached.
    std::string Make() {
        text_.clear();
        if (Below(2)) {
            AddReadable();
        } else {
            const int sections = 4 + Below(6);
            for (int i = 0; i < sections; ++i) AddSection(i < 4 && Below(30) ? i : Below(8));
        }
        for (int damage = Below(3); damage > 0 && Below(3) == 0; --damage) Damage();
        return text_;
    }

private:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    // The first choices of each are well formed.
    template <std::size_t Size>
    const char* Pick(const char* const (&choices)[Size]) {
        const int count = static_cast<int>(Size);
        return choices[Below(isTame_ && Below(20) ? std::min(count, 2) : count)];
    }

    void AddReadable() {
        Add("[SETUP] NAME = \"n\" CATEGORY = \"c\"\n[SOURCES]\n[EFFECTS] A = \"a\" B = \"b\"\n"
            "[STRUCTURE] OUTPUT = MIX(A, B)\n");
        isTame_ = true;
        int sections[] = {4, 5, 6, 7};
        for (int last = 3; last > 0; --last) std::swap(sections[last], sections[Below(last + 1)]);
        for (const int section : sections) {
            if (Below(6)) AddSection(section);
        }
        isTame_ = false;
    }

    void Add(std::string_view part) { text_ += part; }
    void Blank() { Add(Pick({" ", " ", " ", "", "\n", "\t", "  ", "\r\n", " ; note\n", ";x\n"})); }
    void Name() {
        Add(Pick({"A", "B", "a", "b1", "Mix", "mix0", "MIX1", "C_2", "NAME", "x\xE9", "TRUE"}));
    }
    void String() {
        Add(Pick({"\"p\"", "\"P\"", "\"q r\"", "\"\"", "\" s\"", "\"  \"", "\"WRITE\"", "\"mix\"",
                  "\"[EFFECTS] \"", "\"_x\"", "\"A\"", "\"\xE9\"", "\"a;b\"\n\""}));
    }
    void Number() {
        Add(Pick({"0", "1", "-2", "1.5", "-0.25", "- 3", "7.", "12_3", "99999999999", "+1", "x"}));
    }
    void Kind() {
        Add(Pick({"LINEAR", "cosine", "HERMITE", "HERMITE", "HERMITE", "Hold", "CUBIC", "SPLINE"}));
    }
    void Words() {
        for (int i = Below(4); i > 0; --i) {
            Add(Below(8) ? Pick({"READ", "WRITE", "write", "NO_INTERPOLATION", "odd"})
                         : Pick({"ENVELOPED", "EXPENSIVE"}));
            Add(" ");
        }
    }
    void Target() {
        Name();
        Add(Pick({".", ".", ".", " . ", "..", ""}));
        String();
    }
    void Targets() {
        Target();
        for (int i = Below(6); i > 3; --i) {
            Add(Pick({",", ", ", ", "}));
            Target();
        }
    }
    void Path() {
        for (int i = Below(3); i >= 0; --i) {
            if (Below(3)) {
                String();
            } else {
                Add(Pick({"%A%", "%b1%", "% a %", "%%"}));
            }
            if (i > 0) Add(Pick({"+", " + "}));
        }
    }
    void Key(bool isLast) {
        Add("{");
        Number();
        Add(",");
        if (!isLast) {
            Number();
            Add(", ");
        }
        Kind();
        if (Below(3) == 0) {
            Add(",");
            Number();
            Add(",");
            Number();
        }
        Add("}");
    }

    void SetupStatement() {
        switch (Below(6)) {
            case 0:
                Add("NAME = ");
                return String();
            case 1:
                Add("category=");
                return String();
            case 2:
                Add("SPEED = ");
                return Number();
            case 3:
                return Add(Pick({"SWAP = FALSE", "IS_FILTER = TRUE", "IS_FILTER=false", "SWAP = x",
                                 "LATE = TRUE", "IS_FILTER = maybe", "OTHER = x"}));
            case 4:
                Add(Pick({"%A% = REGS : {", "%b1%=regs:{", "%b1% = REGS {"}));
                for (int i = Below(4); i > 0; --i) {
                    String();
                    Add(",");
                }
                String();
                return Add("}");
            default:
                Name();
                Add(" = ");
                return String();
        }
    }
    void SourcesStatement() {
        Name();
        Add(" = ");
        switch (Below(4)) {
            case 0:
                return Number();
            case 1:
                return Add(Pick({"INPUT", "input", "OUTPUT"}));
            case 2:
                Add(Pick({"BITMAP : ", "bitmap:"}));
                return Path();
            default:
                Add("MOVIE : ");
                return Path();
        }
    }
    void Structure() {
        Add(Below(20) ? Pick({"OUTPUT =", "OUTPUT = ", "output="}) : "OUT = ");
        int open = 0;
        for (int i = Below(8); i > 0; --i) {
            if (Below(8)) {
                Add(Pick({"A", "b", "b1", "c_2", "Mix"}));
            } else {
                Name();
            }
            if (Below(3) == 0) {
                Add("(");
                ++open;
            } else if (open > 0 && Below(2)) {
                Add(")");
                --open;
            }
            Add(Pick({",", " ", ", "}));
            if (Below(40) == 0) Add(Pick({"(", ")", "()"}));
        }
        if (Below(10)) text_.append(static_cast<std::size_t>(open), ')');
    }
    void Statement(int section) {
        switch (section) {
            case 0:
                return SetupStatement();
            case 1:
                return SourcesStatement();
            case 2:
                Name();
                Add(" = ");
                return Below(3) ? String() : Add(Pick({"MIX", "mix", "MIXX"}));
            case 3:
                return Structure();
            case 4:
                Words();
                String();
                Add(" = ");
                if (Below(3) == 0) return String();
                return Below(2) ? Number() : Add(Pick({"TRUE", "false", "%A%"}));
            case 5:
                Words();
                String();
                Add(" = ");
                return Targets();
            case 6:
                Name();
                Add(" = {");
                Number();
                Add("}, ");
                for (int i = Below(4); i > 0; --i) {
                    Key(Below(12) == 0);
                    Add(", ");
                }
                return Key(Below(12) != 0);
            default:
                Targets();
                Add(" = ");
                switch (Below(4)) {
                    case 0:
                        return Name();
                    case 1:
                        return String();
                    case 2:
                        return Number();
                    default:
                        return Add(Pick({"%A%", "%b1%", "{5}", "%", "(", ""}));
                }
        }
    }
    void AddSection(int section) {
        static const char* const kHeaders[] = {"[SETUP]",     "[SOURCES]",    "[EFFECTS]",
                                               "[STRUCTURE]", "[PROPERTIES]", "[MAPPING]",
                                               "[ENVELOPES]", "[TIMELINE]"};
        Add(kHeaders[section]);
        Add(Below(30) ? Pick({"\n", "\n", " ", "\r\n", " ; note\n"}) : Pick({";x\n", ""}));
        if (section == 0 && Below(8)) Add("NAME = \"n\" CATEGORY = \"c\" ");
        if (section == 2 && Below(6)) Add("A = \"a\" B = \"b\" b1 = MIX C_2 = MIX ");
        if (section == 3) return Statement(3), Blank(), Add("\n");
        for (int i = Below(5); i > 0; --i) {
            Statement(section);
            Add(Pick({"\n", "\n", " "}));
            Blank();
        }
    }
    void Damage() {
        if (text_.empty()) return;
        const auto at = static_cast<std::size_t>(Below(static_cast<int>(text_.size())));
        switch (Below(3)) {
            case 0:
                text_.erase(at, 1 + static_cast<std::size_t>(Below(4)));
                break;
            case 1:
                text_.insert(at, Pick({"\"", "[", "]", "(", "=", " ", ";", "-", "%", "{"}));
                break;
            default:
                text_[at] = Pick({"\"", "=", ".", "Z", "5", "\n", ";"})[0];
                break;
        }
    }

    std::mt19937 random_;
    std::string text_;
    bool isTame_ = false;  // of this many choices most are well formed
};

// How often the sections ended with each status.
using Met = std::map<std::pair<Section, int>, int>;

void Compare(const std::string& text, Met& met) {
    const PlainComparison comparison = CompareWithPlain(text);
    ASSERT_EQ(comparison.difference, "") << text;
    for (std::size_t i = 0; i < comparison.sections.size(); ++i) {
        ++met[{static_cast<Section>(i), comparison.sections[i]}];
    }
}

TEST(Differential, GeneratedScriptsReadAsThePlainReaderReadsThem) {
    ScriptMaker maker(20240607);
    Met met;
    for (int i = 0; i < kGeneratedScripts; ++i) {
        Compare(maker.Make(), met);
        if (HasFatalFailure()) return;
    }
    // Damage everywhere would compare failures only.
    EXPECT_GT((kGeneratedScripts - met[{Section::kTimeline, -1}]), kGeneratedScripts / 20);
    // The scripts are the same everywhere. -1: not reached.
    const std::pair<Section, std::vector<int>> statuses[] = {
        {Section::kSetup, {0, 1, 3, 12}},
        {Section::kSources, {-1, 0, 4}},
        {Section::kEffects, {-1, 0, 5}},
        {Section::kStructure, {-1, 0, 6, 7, 8, 12}},
        {Section::kProperties, {-1, 0, 2, 10, 11}},
        {Section::kMapping, {-1, 0, 9, 10, 11, 13, 14}},
        {Section::kEnvelopes, {-1, 0, 14, 15, 17}},
        {Section::kTimeline, {-1, 0, 12, 18, 19}}};
    for (const auto& [section, expected] : statuses) {
        for (const int status : expected) {
            EXPECT_GT((met[{section, status}]), kGeneratedScripts / 4000)
                << SectionKeyword(section) << " " << status;
        }
    }
}

}  // namespace
