// Texts made to exhaust: a small stack, millions of elements, and searches that fail everywhere.
// A cost that grew faster than the text would keep these tests from ending.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "compositions/language/CompInterpreter.h"
#include "support/SmallStack.h"

namespace {

using namespace compositions;
using helpers::scripting::Pieces;

constexpr std::size_t kMillion = 1'000'000;

std::string Repeated(const std::string& part, std::size_t count) {
    std::string text;
    text.reserve(part.size() * count);
    for (; count != 0; --count) text += part;
    return text;
}

struct Match {
    bool found;
    std::size_t pieces;
};

Match MatchOnSmallStack(std::uint32_t rule, const std::string& bytes) {
    Match match{};
    RunOnSmallStack([&] {
        CompInterpreter interpreter(bytes);
        Pieces pieces;
        match.found = interpreter.get_expression(rule, pieces);
        match.pieces = pieces.size();
    });
    return match;
}

TEST(HostileText, AMillionNamesBeforeAString) {
    const Match match = MatchOnSmallStack(R43, Repeated("a ", kMillion) + "\"s\"");
    EXPECT_TRUE(match.found);
    EXPECT_EQ(match.pieces, kMillion + 1);
    EXPECT_FALSE(MatchOnSmallStack(R43, Repeated("a ", kMillion)).found);
}

TEST(HostileText, AMillionPathParts) {
    const Match match = MatchOnSmallStack(R11, Repeated("%a%+", kMillion) + "\"s\"");
    EXPECT_TRUE(match.found);
    EXPECT_EQ(match.pieces, kMillion + 1);
    EXPECT_EQ(MatchOnSmallStack(R11, Repeated("%a%+", kMillion)).pieces, kMillion);
}

TEST(HostileText, AMillionTargets) {
    const std::string targets = Repeated("a.\"x\",", kMillion);
    const Match match = MatchOnSmallStack(R45, targets + "b.\"y\"");
    EXPECT_TRUE(match.found);
    EXPECT_EQ(match.pieces, 2 * kMillion + 2);
    EXPECT_EQ(MatchOnSmallStack(R45, targets).pieces, 2 * kMillion);
    EXPECT_EQ(MatchOnSmallStack(R54, targets + "b.\"y\"=").pieces, 2 * kMillion + 2);
    EXPECT_FALSE(MatchOnSmallStack(R54, targets + "b.\"y\"").found);
    EXPECT_FALSE(MatchOnSmallStack(R54, targets).found);
}

TEST(HostileText, AMillionKeys) {
    const std::string keys = Repeated("{1,2,a},", kMillion);
    const Match match = MatchOnSmallStack(R51, keys + "{3,b}");
    EXPECT_TRUE(match.found);
    EXPECT_EQ(match.pieces, 3 * kMillion + 2);
    EXPECT_FALSE(MatchOnSmallStack(R51, keys).found);
    EXPECT_TRUE(MatchOnSmallStack(R52, "e={1}," + keys + "{1.5,b,1,2}").found);
}

// Every rule is looked for, and matched, in each of these.
TEST(HostileText, SearchesEndOnAnyText) {
    constexpr std::size_t kSize = 20'000;
    const std::vector<std::string> texts = {
        Repeated(" ", kSize),
        Repeated("[", kSize),
        Repeated("-", kSize),
        Repeated("a ", kSize / 2),
        Repeated("[", kSize / 2) + Repeated("a", kSize / 2),
        Repeated("a", kSize / 2) + "=" + Repeated("b", kSize / 2),
        Repeated("a", kSize / 2) + " " + Repeated("b", kSize / 2),
        Repeated("a", kSize / 3) + ".\"" + Repeated("b", kSize / 3) + "\"." +
            Repeated("b", kSize / 3),
        "\"" + Repeated("a", kSize),
        Repeated("\"", kSize),
        Repeated("\"a", kSize / 2),
        Repeated("(", kSize),
        Repeated("{", kSize),
        Repeated("{1,2,a},", kSize / 8),
        Repeated("a.\"x\",", kSize / 6),
        Repeated("%a%+", kSize / 4),
        Repeated("%a", kSize / 2),
        Repeated("1", kSize),
        Repeated("1.", kSize / 2),
        Repeated(";\n", kSize / 2),
        Repeated(";", kSize),
        Repeated("a [SETUP]x", kSize / 10),
        Repeated(" \n[ SETUP", kSize / 9),
        std::string(kSize, '\0'),
        std::string(kSize, '\xFF'),
    };
    RunOnSmallStack([&] {
        for (const std::string& text : texts) {
            CompInterpreter interpreter(text);
            Pieces pieces;
            for (std::uint32_t symbol = 0; symbol <= R57; ++symbol) {
                interpreter.SetPosition(0);
                interpreter.get_expression(symbol, pieces);
                interpreter.SetPosition(0);
                interpreter.find_expression(symbol, symbol % 2 == 0);
            }
        }
    });
}

// The first of them makes the language's tables: run by itself, too, where nobody has made them.
TEST(HostileText, ManyThreadsMayMakeInterpretersAtOnce) {
    std::vector<std::thread> threads;
    std::vector<int> found(8);
    std::atomic<std::size_t> ready{0};
    for (int& result : found) {
        threads.emplace_back([&] {
            for (++ready; ready < found.size();) std::this_thread::yield();
            for (int count = 0; count < 50; ++count) {
                CompInterpreter interpreter(std::string_view("a [SETUP] "));
                result += interpreter.find_expression(R26, false) ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(found, std::vector<int>(8, 50));
}

}  // namespace
