// The toolkit against the plain matcher on generated grammars: every flag, malformed nodes, rules
// that call each other, and the consistency reports.

#include <gtest/gtest.h>

#include "helpers/report/CapturedOutput.h"
#include "helpers/scripting/PlainInterpreter.h"
#include "helpers/scripting/RandomTexts.h"
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
        interpreter.add_lexem({kind, RandomSet(random), RandomSet(random), !random.OneIn(6),
                               random.OneIn(6), random.OneIn(6)});
    }
    for (std::uint32_t rule = 0; rule < kRules; ++rule) {
        if (random.OneIn(16)) continue;
        interpreter.add_rule(kLexems + rule, RandomNode(random, rule, 3, malformed));
    }
}

void ExpectSameState(const TestInterpreter& real, const plain::Interpreter& plain) {
    EXPECT_EQ(real.Position(), plain.position);
    EXPECT_EQ(real.LastLexemKind(), plain.lastKind);
    EXPECT_EQ(real.LastLexemText(), plain.lastText);
    EXPECT_EQ(TakeReported(), Reported(plain.reportedLines));
}

// One grammar and one text, all symbols, all operations.
void Compare(std::uint64_t seed, bool malformed) {
    Random random(seed);
    const std::string text = RandomText(random);
    TestInterpreter real(std::string_view(text), L" ");
    AddTables(real, random, malformed);
    plain::Interpreter plain(real.Text(), L" ", real.Tables());
    const auto start = [&](std::size_t position) {
        plain.position = position;
        plain.reportedLines.clear();
        real.SetPosition(position);
    };
    for (std::uint32_t symbol = 0; symbol < kLexems + kRules + 1; ++symbol) {
        const std::size_t position = random.Below(text.size());
        Strings pieces;
        Strings plainPieces;
        start(position);
        EXPECT_EQ(real.get_expression(symbol, pieces), plain.get_expression(symbol, plainPieces));
        EXPECT_EQ(pieces, plainPieces);
        ExpectSameState(real, plain);
        start(position);
        const bool peek = random.OneIn(2);
        EXPECT_EQ(real.find_expression(symbol, peek), plain.find_expression(symbol, peek));
        ExpectSameState(real, plain);
        const GrammarNode node = RandomNode(random, kRules, 2, malformed);
        const bool append = random.OneIn(2);
        pieces = plainPieces = random.OneIn(2) ? Strings{L"x"} : Strings{};
        start(position);
        EXPECT_EQ(real.get_expression_lexem(node, pieces, peek, append),
                  plain.get_expression_lexem(node, plainPieces, peek, append));
        EXPECT_EQ(pieces, plainPieces);
        ExpectSameState(real, plain);
    }
}

TEST(RandomGrammar, WellFormedGrammarsMatchAsThePlainMatcherMatches) {
    captured::TakeDebugged();
    for (std::uint64_t seed = 0; seed < TARNEX_GENERATED_TEXTS / 200; ++seed) {
        Compare(seed, false);
        ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed;
    }
}

TEST(RandomGrammar, MalformedGrammarsMatchAndReportAsThePlainMatcherDoes) {
    captured::TakeDebugged();
    for (std::uint64_t seed = 0; seed < TARNEX_GENERATED_TEXTS / 200; ++seed) {
        Compare(seed, true);
        ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed;
    }
}

}  // namespace
