// The script toolkit when memory runs out: the n-th allocation fails, or that one and all behind
// it.

#include <gtest/gtest.h>

#include <new>

#include "compositions/language/CompInterpreter.h"
#include "helpers/report/CapturedOutput.h"
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

// What is asked for is copied last: memory that runs out there is a failed match, and before that,
// while the matcher makes itself ready, an exception. Nothing of either is seen.
struct Outcome {
    bool matched = false;
    bool thrown = false;
    bool happened = true;
};

template <class Call>
Outcome Try(int nth, bool lasts, const Call& call) {
    Outcome outcome;
    const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
    try {
        outcome.matched = call();
    } catch (const std::bad_alloc&) {
        outcome.thrown = true;
    }
    outcome.happened = fault.Happened();
    return outcome;
}

// `round` gets a fresh interpreter for each allocation. Some fault must end in a failed match.
template <class Round>
void ForEachInterpreter(Round round) {
    static_cast<void>(CompInterpreter(kText));  // what is made once and kept
    int failed = 0;
    captured::TakeTraced();
    captured::TakeDebugged();
    ForEachAllocation([&](int nth, bool lasts) {
        const std::int64_t live = LiveAllocations();
        Outcome outcome;
        {
            CompInterpreter interpreter(kText);
            outcome = round(interpreter, nth, lasts);
        }
        captured::TakeTraced();
        captured::TakeDebugged();
        EXPECT_EQ(outcome.matched, !outcome.happened);
        if (!outcome.matched && !outcome.thrown) ++failed;
        EXPECT_EQ(LiveAllocations(), live) << "leaked";
        return outcome.happened;
    });
    EXPECT_GT(failed, 0);
}

TEST(ToolkitOutOfMemory, GetLexemAnswersFalse) {
    ForEachInterpreter([](CompInterpreter& interpreter, int nth, bool lasts) {
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
    ForEachInterpreter([](CompInterpreter& interpreter, int nth, bool lasts) {
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

}  // namespace
