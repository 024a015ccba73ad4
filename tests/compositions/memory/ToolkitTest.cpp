// The script toolkit when memory runs out: the n-th allocation fails, or that one and all behind
// it.

#include <gtest/gtest.h>

#include <new>

#include "compositions/language/CompInterpreter.h"
#include "helpers/report/CapturedOutput.h"
#include "helpers/scripting/TestLanguage.h"
#include "tarnex/AllocationFault.h"

namespace {

using namespace compositions;
using test_support::AllocationFault;
using test_support::Fault;
using test_support::ForEachAllocation;
using test_support::LiveAllocations;

using Strings = std::vector<std::wstring>;

constexpr std::uint32_t kIdentifier = 6;
const std::string kText =
    "  an_identifier_that_is_long_enough_for_the_heap = \"and a string that is long, as well\" ";
const std::wstring kName = L"an_identifier_that_is_long_enough_for_the_heap";
const std::wstring kValue = L"and a string that is long, as well";

// Memory that runs out is a failed match, of which nothing is seen.
struct Outcome {
    bool matched = false;
    bool happened = true;
};

template <class Call>
Outcome Try(int nth, bool lasts, const Call& call) {
    const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
    const bool matched = call();
    return {matched, fault.Happened()};
}

// `round` gets a fresh interpreter of the text for each allocation.
template <class Round>
void ForEachInterpreter(const std::string& text, Round round) {
    static_cast<void>(CompInterpreter(text));  // what is made once and kept
    captured::TakeTraced();
    captured::TakeDebugged();
    ForEachAllocation([&](int nth, bool lasts) {
        const std::int64_t live = LiveAllocations();
        Outcome outcome;
        {
            CompInterpreter interpreter(text);
            outcome = round(interpreter, nth, lasts);
        }
        captured::TakeTraced();
        captured::TakeDebugged();
        EXPECT_EQ(outcome.matched, !outcome.happened);
        EXPECT_EQ(LiveAllocations(), live) << "leaked";
        return outcome.happened;
    });
}

TEST(ToolkitOutOfMemory, GetLexemAnswersFalse) {
    ForEachInterpreter(kText, [](CompInterpreter& interpreter, int nth, bool lasts) {
        std::wstring text = L"before";
        const Outcome outcome =
            Try(nth, lasts, [&] { return interpreter.get_lexem(kIdentifier, text); });
        if (!outcome.matched) {
            EXPECT_EQ(text, L"before");
            EXPECT_LE(interpreter.Position(), 2u);  // behind the blanks at most
            EXPECT_TRUE(interpreter.get_lexem(kIdentifier, text)) << "the next call";
        }
        EXPECT_EQ(text, kName);
        return outcome;
    });
}

TEST(ToolkitOutOfMemory, GetExpressionAnswersFalse) {
    ForEachInterpreter(kText, [](CompInterpreter& interpreter, int nth, bool lasts) {
        Strings pieces;
        const std::size_t before = interpreter.Position();
        const Outcome outcome =
            Try(nth, lasts, [&] { return interpreter.get_expression(R16, pieces); });
        if (!outcome.matched) {
            EXPECT_TRUE(pieces.empty());
            EXPECT_EQ(interpreter.Position(), before);
            EXPECT_TRUE(interpreter.get_expression(R16, pieces)) << "the next call";
        }
        EXPECT_EQ(pieces, (Strings{kName, kValue}));
        return outcome;
    });
}

// The lists of the match itself outgrow their first room.
TEST(ToolkitOutOfMemory, GetExpressionOfManyPiecesAnswersFalse) {
    std::string text;
    for (int i = 0; i < 200; ++i) text += "w ";
    ForEachInterpreter(text + "\"n\" ", [](CompInterpreter& interpreter, int nth, bool lasts) {
        Strings pieces;
        const Outcome outcome =
            Try(nth, lasts, [&] { return interpreter.get_expression(R43, pieces); });
        if (!outcome.matched) {
            EXPECT_TRUE(pieces.empty());
            EXPECT_EQ(interpreter.Position(), 0u);
            EXPECT_TRUE(interpreter.get_expression(R43, pieces)) << "the next call";
        }
        EXPECT_EQ(pieces.size(), 201u);
        return outcome;
    });
}

// The node is compiled anew, and the matcher must not keep to that when it fails.
TEST(ToolkitOutOfMemory, GetExpressionLexemAnswersFalse) {
    std::string text;
    for (int i = 0; i < 200; ++i) text += "w" + std::string(100, ' ');
    ForEachInterpreter(text + "\"n\" ", [](CompInterpreter& interpreter, int nth, bool lasts) {
        Strings pieces = {L"before"};
        const Outcome outcome = Try(nth, lasts, [&] {
            return interpreter.get_expression_lexem(helpers::scripting::symbol(R43), pieces, true,
                                                    false);
        });
        if (!outcome.matched) {
            EXPECT_EQ(pieces, Strings{L"before"});
            EXPECT_EQ(interpreter.Position(), 0u);
            EXPECT_TRUE(interpreter.get_expression(R43, pieces)) << "the next call";
            EXPECT_EQ(pieces.size(), 201u);
        } else {
            EXPECT_EQ(pieces.size(), 202u);
        }
        return outcome;
    });
}

// Where one mark was being looked for, the other is found afterwards.
TEST(ToolkitOutOfMemory, FindExpressionLeavesThePositionAndFindsTheNext) {
    using helpers::scripting::keyword;
    using helpers::scripting::then;
    constexpr std::uint32_t kWord = 1, kSquare = 2, kAngle = 3, kOne = 11, kTwo = 12;
    std::string text = "[one]";
    for (int i = 0; i < 100; ++i) text += "<no>";
    text += "<two> ";
    ForEachAllocation([&](int nth, bool lasts) {
        test_language::TestInterpreter interpreter(std::string_view(text), L" ");
        interpreter.add_lexem({kWord, L"ontw", L"]> "});
        interpreter.add_lexem({kSquare, L"[", L"ontw"});
        interpreter.add_lexem({kAngle, L"<", L"ontw"});
        interpreter.add_rule(kOne, then(kSquare, keyword(kWord, L"one")));
        interpreter.add_rule(kTwo, then(kAngle, keyword(kWord, L"two")));
        EXPECT_TRUE(interpreter.find_expression(kOne, true));
        EXPECT_EQ(interpreter.Position(), 0u);
        bool happened = true;
        try {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            EXPECT_TRUE(interpreter.find_expression(kTwo, true));
            happened = fault.Happened();
            EXPECT_EQ(interpreter.Position(), text.find("<two"));
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(interpreter.Position(), 0u);
            EXPECT_TRUE(interpreter.find_expression(kOne, true)) << "the other mark";
            EXPECT_TRUE(interpreter.find_expression(kTwo, true)) << "the next call";
        }
        return happened;
    });
}

}  // namespace
