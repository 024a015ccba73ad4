// The toolkit against the plain matcher, on generated texts.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <ostream>

#include "compositions/language/CompInterpreter.h"
#include "helpers/scripting/PlainInterpreter.h"
#include "helpers/scripting/RandomTexts.h"

namespace {

using compositions::CompInterpreter;
using generated::Random;
using helpers::scripting::Grammar;
using helpers::scripting::GrammarNode;
using helpers::scripting::SymbolMark;

constexpr std::size_t kGeneratedTexts = TARNEX_GENERATED_TEXTS;

// Everything that a caller can see after an operation.
struct Outcome {
    bool found = false;
    std::size_t position = 0;
    std::vector<std::wstring> pieces;
    std::uint32_t lastKind = 0;
    std::wstring lastText;

    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    out << (outcome.found ? "found" : "not found") << ", position " << outcome.position
        << ", last lexem " << outcome.lastKind << ", pieces";
    for (const std::wstring& piece : outcome.pieces) out << ' ' << testing::PrintToString(piece);
    return out;
}

Outcome Look(const CompInterpreter& real, bool found, std::vector<std::wstring> pieces) {
    return {found, real.Position(), std::move(pieces), real.LastLexemKind(),
            std::wstring(real.LastLexemText())};
}

Outcome Look(const plain::Interpreter& plain, bool found, std::vector<std::wstring> pieces) {
    return {found, plain.position, std::move(pieces), plain.lastKind, plain.lastText};
}

// Makes the same calls on both and compares what can be seen after each.
class Pair {
public:
    Pair(const std::string& bytes, plain::Interpreter& plain) : real_(bytes), plain_(plain) {
        plain_.TakeText(plain::Preprocess(bytes));
    }

    bool SameText(const std::string& bytes) const {
        return real_.Text() == plain::Preprocess(bytes);
    }

    void Start(std::size_t position) {
        real_.SetPosition(position);
        plain_.position = position;
    }

    bool SameMatch(std::uint32_t symbol) {
        std::vector<std::wstring> pieces{L"from before"};
        const bool found = real_.get_expression(symbol, pieces);
        std::vector<std::wstring> plainPieces{L"from before"};
        const bool plainFound = plain_.get_expression(symbol, plainPieces);
        return Same(Look(real_, found, pieces), Look(plain_, plainFound, plainPieces));
    }

    bool SameViews(std::uint32_t symbol) {
        helpers::scripting::Pieces pieces;
        const bool found = real_.get_expression(symbol, pieces);
        std::vector<std::wstring> plainPieces;
        const bool plainFound = plain_.get_expression(symbol, plainPieces);
        return Same(Look(real_, found, {pieces.begin(), pieces.end()}),
                    Look(plain_, plainFound, plainPieces));
    }

    bool SameFind(std::uint32_t symbol, bool peek) {
        const bool found = real_.find_expression(symbol, peek);
        const bool plainFound = plain_.find_expression(symbol, peek);
        return Same(Look(real_, found, {}), Look(plain_, plainFound, {}));
    }

    bool SameLexem(std::uint32_t kind) {
        std::wstring text = L"from before";
        const bool found = real_.get_lexem(kind, text);
        std::wstring plainText = L"from before";
        const bool plainFound = plain_.get_lexem(kind, plainText);
        return Same(Look(real_, found, {text}), Look(plain_, plainFound, {plainText}));
    }

private:
    static bool Same(const Outcome& real, const Outcome& plain) {
        EXPECT_EQ(real, plain);
        return real == plain;
    }

    CompInterpreter real_;
    plain::Interpreter& plain_;
};

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
        Pair pair(text, plain_);
        const std::uint32_t other = random.Pick(symbols_);
        bool same = pair.SameText(text);
        EXPECT_TRUE(same) << "the texts differ";
        same = same && pair.SameMatch(symbol) && pair.SameViews(other);
        pair.Start(random.Below(text.size()));
        same = same && pair.SameFind(random.OneIn(4) ? other : symbol, random.OneIn(2));
        same = same && pair.SameFind(other, random.OneIn(2));
        same = same && pair.SameLexem(random.Pick(symbols_)) && pair.SameMatch(symbol);
        pair.Start(0);
        return same && pair.SameFind(symbol, random.OneIn(2)) && pair.SameMatch(other);
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
