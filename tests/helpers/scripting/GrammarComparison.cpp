#include "helpers/scripting/GrammarComparison.h"

#include <string>
#include <utility>
#include <vector>

#include "helpers/report/CapturedOutput.h"
#include "helpers/scripting/PlainInterpreter.h"
#include "helpers/scripting/TestLanguage.h"

namespace {

using generated::Random;
using helpers::scripting::GrammarNode;
using test_language::Strings;
using test_language::TestInterpreter;

constexpr std::uint32_t kLexems = 5;
constexpr std::uint32_t kRules = 5;  // numbered behind the lexems

std::wstring RandomSet(Random& random) {
    const std::wstring characters = L"abcA. ";
    std::wstring set;
    for (const wchar_t character : characters) {
        if (random.OneIn(2)) set += character;
    }
    return random.OneIn(10) ? L" " : set;
}

// At a place where nothing was read yet, only rules with smaller numbers are named: the plain
// matcher would not come back from a rule that begins with itself.
GrammarNode RandomNode(Random& random, std::uint32_t rulesInFront, int depth, bool malformed) {
    if (depth == 0 || random.OneIn(4)) {
        const std::uint32_t number = random.Below(kLexems + rulesInFront);
        GrammarNode node(number);
        if (number < kLexems && random.OneIn(5)) node.keyword = random.OneIn(2) ? L"A" : L"ab";
        return node;
    }
    const bool isChoice = random.OneIn(2);
    std::size_t children = 2;
    if (malformed && random.OneIn(6)) children = random.Below(4);
    GrammarNode node;
    for (std::size_t child = 0; child < children; ++child) {
        const bool behind = !isChoice && child != 0;
        GrammarNode part = RandomNode(random, behind ? kRules : rulesInFront, depth - 1, malformed);
        (isChoice ? node.choice : node.sequence).push_back(std::move(part));
    }
    // Alternatives that begin alike are read together.
    if (node.choice.size() == 2 && node.choice[0].sequence.size() == 2 && random.OneIn(2)) {
        node.choice[1] = node.choice[0];
        node.choice[1].sequence[1] = RandomNode(random, kRules, depth - 1, malformed);
        if (random.OneIn(2)) node.choice[1].flags = random.Below(16);
    }
    node.flags = random.Below(16);
    return node;
}

std::string RandomText(Random& random) {
    const std::string characters = "aabbcA. ";
    std::string text(1 + random.Below(12), ' ');
    for (char& character : text) character = random.Pick(characters);
    return text;
}

std::vector<std::string> Reported(const std::vector<int>& lines) {
    std::vector<std::string> texts;
    for (const int line : lines) texts.push_back("line: (" + std::to_string(line) + ")");
    return texts;
}

std::vector<std::string> TakeReported() {
    std::vector<std::string> texts;
    for (const std::string& line : captured::TakeDebugged()) {
        const std::size_t begin = line.find("line: (");
        texts.push_back(line.substr(begin, line.find(')', begin) + 1 - begin));
    }
    return texts;
}

void AddTables(TestInterpreter& interpreter, Random& random, bool malformed) {
    for (std::uint32_t kind = 0; kind < kLexems; ++kind) {
        std::wstring start = RandomSet(random);
        std::wstring stop = RandomSet(random);
        const std::uint32_t shape = random.Below(4);
        const wchar_t only = static_cast<wchar_t>(random.Pick(std::string("abA.")));
        if (shape == 0) {  // a mark
            start = only;
            stop += only;
        } else if (shape == 1) {  // until a certain character, which may be a mark
            std::erase(start, only);
            stop = only;
        }
        interpreter.add_lexem(
            {kind, start, stop, !random.OneIn(6), random.OneIn(6), random.OneIn(6)});
    }
    for (std::uint32_t rule = 0; rule < kRules; ++rule) {
        if (random.OneIn(16)) continue;
        interpreter.add_rule(kLexems + rule, RandomNode(random, rule, 3, malformed));
    }
}

// Makes each call on both sides.
class Comparison {
public:
    Comparison(TestInterpreter& real, Random& random, bool malformed)
        : real_(real),
          plain_(real.Text(), L" ", real.Tables()),
          random_(random),
          malformed_(malformed) {}

    std::string Difference(std::uint32_t symbol, std::size_t position) {
        const std::string where = " of symbol " + std::to_string(symbol);
        if (!SameExpression(symbol, position)) return "get_expression" + where;
        const bool flag = random_.OneIn(2);
        if (!SameSearch(symbol, position, flag)) return "find_expression" + where;
        if (!SameNode(position, flag)) return "get_expression_lexem";
        return {};
    }

private:
    void Start(std::size_t position) {
        plain_.position = position;
        plain_.reportedLines.clear();
        real_.SetPosition(position);
    }
    bool SameState() {
        return real_.Position() == plain_.position && real_.LastLexemKind() == plain_.lastKind &&
               real_.LastLexemText() == plain_.lastText &&
               TakeReported() == Reported(plain_.reportedLines);
    }
    bool SameExpression(std::uint32_t symbol, std::size_t position) {
        Strings pieces;
        Strings plainPieces;
        Start(position);
        const bool found = real_.get_expression(symbol, pieces);
        return found == plain_.get_expression(symbol, plainPieces) && pieces == plainPieces &&
               SameState();
    }
    bool SameSearch(std::uint32_t symbol, std::size_t position, bool peek) {
        Start(position);
        const bool found = real_.find_expression(symbol, peek);
        return found == plain_.find_expression(symbol, peek) && SameState();
    }
    bool SameNode(std::size_t position, bool store) {
        const GrammarNode node = RandomNode(random_, kRules, 2, malformed_);
        const bool append = random_.OneIn(2);
        Strings pieces = random_.OneIn(2) ? Strings{L"x"} : Strings{};
        Strings plainPieces = pieces;
        Start(position);
        const bool found = real_.get_expression_lexem(node, pieces, store, append);
        return found == plain_.get_expression_lexem(node, plainPieces, store, append) &&
               pieces == plainPieces && SameState();
    }

    TestInterpreter& real_;
    plain::Interpreter plain_;
    Random& random_;
    bool malformed_;
};

}  // namespace

std::string DifferenceOnRandomGrammar(Random& random, bool malformed) {
    captured::TakeDebugged();
    const std::string text = RandomText(random);
    TestInterpreter real(std::string_view(text), L" ");
    AddTables(real, random, malformed);
    Comparison comparison(real, random, malformed);
    for (std::uint32_t symbol = 0; symbol < kLexems + kRules + 1; ++symbol) {
        std::string difference = comparison.Difference(symbol, random.Below(text.size()));
        if (!difference.empty()) return difference + " on \"" + text + "\"";
    }
    return {};
}
