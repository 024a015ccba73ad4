#include "helpers/scripting/RandomTexts.h"

#include <string_view>

namespace generated {
namespace {

using helpers::scripting::Grammar;
using helpers::scripting::GrammarNode;
using helpers::scripting::LexemDefinition;
using helpers::scripting::SymbolMark;

const std::vector<std::string> kBodies = {"",   "",  "",    "",  "a",    "CAM_1", "x9",
                                          "12", "3", "007", " ", "\xE9", "b_c",   "TRUE"};
const std::vector<std::string> kBlanks = {"",  "",   "",     "",   "",   "",       " ",
                                          " ", "\n", "\r\n", "\t", "  ", ";note\n"};
const std::vector<std::string> kFragments = {
    "[",    "]",   "]\n",    "\"",  "\"\"",   "=",     "%",  ",",        ":",         "{",
    "}",    "(",   ")",      "+",   "-",      ".",     ";",  ";x\n",     "a",         "Id_2",
    "7",    "1.5", "-3",     "mix", "INPUT",  "REGS",  " ",  "\n",       "[SETUP] ",  "\"s\"",
    "true", "_",   "OUTPUT", "\\",  "bitmap", "movie", "\t", "a.\"p\",", "{1,HOLD},", "%v%+"};
constexpr int kDeepest = 14;

class Writer {
public:
    Writer(const Grammar& grammar, Random& random) : grammar_(grammar), random_(random) {}

    void Write(const GrammarNode& node, int depth) {
        if (depth > kDeepest) return;
        if (node.id < grammar_.SymbolCount()) {
            WriteSymbol(node, depth);
        } else if (!node.choice.empty()) {
            Write(random_.Pick(node.choice), depth + 1);
        } else {
            for (const GrammarNode& child : node.sequence) Write(child, depth + 1);
        }
    }

    std::string text;

private:
    void WriteSymbol(const GrammarNode& node, int depth) {
        if (grammar_.Mark(node.id) == SymbolMark::kLexem) {
            text += random_.Pick(kBlanks);
            if (node.keyword.empty() || random_.OneIn(24)) {
                WriteLexem(grammar_.Lexems().at(node.id));
            } else {
                WriteWord(node.keyword);
            }
        } else if (node.id < grammar_.Rules().size()) {
            Write(grammar_.Rules()[node.id], depth + 1);
        }
    }

    void WriteLexem(const LexemDefinition& definition) {
        if (definition.start_set.empty()) return;
        text += static_cast<char>(random_.Pick(definition.start_set));
        if (definition.start_set.size() > 1) text += random_.Pick(kBodies);
    }

    void WriteWord(const std::wstring& word) {
        const bool lower = random_.OneIn(3);
        for (const wchar_t character : word) {
            const bool change = lower && character >= L'A' && character <= L'Z';
            text += static_cast<char>(change ? character + (L'a' - L'A') : character);
        }
    }

    const Grammar& grammar_;
    Random& random_;
};

}  // namespace

std::string FromNode(const Grammar& grammar, const GrammarNode& node, Random& random) {
    Writer writer(grammar, random);
    writer.Write(node, 0);
    writer.text += random.Pick(kBlanks);
    return std::move(writer.text);
}

std::string Changed(std::string text, Random& random) {
    for (std::uint32_t changes = 1 + random.Below(3); changes != 0; --changes) {
        const std::size_t at = random.Below(text.size() + 1);
        const std::size_t length = random.Below(4);
        switch (random.Below(5)) {
            case 0:
                text.erase(at, length);
                break;
            case 1:
                text.insert(at, random.Pick(kFragments));
                break;
            case 2:
                text.insert(at, text.substr(random.Below(text.size() + 1), length));
                break;
            case 3:
                if (at < text.size()) text[at] = static_cast<char>(random.Below(256));
                break;
            default:
                text.resize(at);
                break;
        }
    }
    return text;
}

std::string Noise(Random& random) {
    std::string text;
    for (std::uint32_t count = random.Below(14); count != 0; --count) {
        text += random.OneIn(16) ? std::string(1, static_cast<char>(random.Below(256)))
                                 : random.Pick(kFragments);
    }
    return text;
}

}  // namespace generated
