// The toolkit against the plain matcher, on generated texts.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "helpers/scripting/MatcherPair.h"
#include "helpers/scripting/RandomTexts.h"

namespace {

using compositions::CompInterpreter;
using generated::Random;
using helpers::scripting::Grammar;
using helpers::scripting::GrammarNode;
using helpers::scripting::SymbolMark;

constexpr std::size_t kGeneratedTexts = TARNEX_GENERATED_TEXTS;

class Differential : public testing::Test {
protected:
    Differential()
        : tables_(CompInterpreter(std::string_view(" ")).Tables()),
          plain_(L"", L" \n\t\r", tables_) {
        for (std::uint32_t symbol = 0; symbol < tables_.SymbolCount(); ++symbol) {
            if (tables_.Mark(symbol) != SymbolMark::kUndefined) symbols_.push_back(symbol);
        }
    }

    std::string MakeText(std::uint32_t symbol, Random& random) {
        std::string text = random.OneIn(8) ? generated::Noise(random) : std::string();
        text += generated::FromNode(tables_, GrammarNode(symbol), random);
        if (random.OneIn(4)) {
            text += generated::FromNode(tables_, GrammarNode(random.Pick(symbols_)), random);
        }
        if (random.OneIn(3)) text = generated::Changed(text, random);
        if (random.OneIn(16)) text = generated::Noise(random);
        return text.empty() ? " " : text;
    }

    bool SameOn(const std::string& text, std::uint32_t symbol, Random& random) {
        MatcherPair pair(text, plain_);
        const std::uint32_t other = random.Pick(symbols_);
        bool same = pair.SameText(text) && pair.SameMatch(symbol) && pair.SameViews(other);
        pair.Start(random.Below(text.size()));
        same = same && pair.SameFind(random.OneIn(4) ? other : symbol, random.OneIn(2));
        same = same && pair.SameFind(other, random.OneIn(2));
        same = same && pair.SameLexem(random.Pick(symbols_)) && pair.SameMatch(symbol);
        pair.Start(0);
        same = same && pair.SameFind(symbol, random.OneIn(2)) && pair.SameMatch(other);
        EXPECT_TRUE(same) << pair.Difference();
        return same;
    }

    const Grammar tables_;
    plain::Interpreter plain_;
    std::vector<std::uint32_t> symbols_;
};

// TARNEX_TEST_SEED repeats a run.
std::uint64_t Seed() {
    const char* wanted = std::getenv("TARNEX_TEST_SEED");
    return wanted != nullptr ? std::strtoull(wanted, nullptr, 10) : 20;
}

TEST_F(Differential, CompositionTextsReadAsThePlainMatcherReadsThem) {
    const std::uint64_t seed = Seed();
    std::cout << "seed " << seed << ", " << kGeneratedTexts << " texts\n";
    for (std::size_t count = 0; count < kGeneratedTexts; ++count) {
        Random random(seed * 1'000'000'007 + count);
        const std::uint32_t symbol = symbols_[count % symbols_.size()];
        const std::string text = MakeText(symbol, random);
        ASSERT_TRUE(SameOn(text, symbol, random))
            << "seed " << seed << ", text " << count << ", symbol " << symbol << ":\n"
            << text;
    }
}

// Most generated texts must match what they were made for, or the comparison says little.
TEST_F(Differential, MostGeneratedTextsMatch) {
    std::size_t matched = 0;
    constexpr std::size_t kTexts = 5000;
    for (std::size_t count = 0; count < kTexts; ++count) {
        Random random(count);
        const std::uint32_t symbol = symbols_[count % symbols_.size()];
        CompInterpreter interpreter(MakeText(symbol, random));
        std::vector<std::wstring> pieces;
        matched += interpreter.get_expression(symbol, pieces) ? 1 : 0;
    }
    EXPECT_GT(matched, kTexts / 4);
    EXPECT_LT(matched, kTexts * 9 / 10);
}

}  // namespace
