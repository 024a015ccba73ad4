// A text and rule numbers to the composition language's matcher, against the plain matcher.

#include <string>

#include "Fuzz.h"
#include "compositions/language/CompLanguage.h"
#include "helpers/report/CapturedOutput.h"
#include "helpers/scripting/MatcherPair.h"

namespace {

constexpr std::size_t kTextLimit = 1000;  // the plain matcher takes time by the square of the size
constexpr int kOperations = 4;

bool Operate(MatcherPair& pair, unsigned operation, std::uint32_t symbol) {
    switch (operation) {
        case 0:
            return pair.SameMatch(symbol);
        case 1:
            return pair.SameViews(symbol);
        case 2:
            return pair.SameFind(symbol, false);
        case 3:
            return pair.SameFind(symbol, true);
        default:
            return pair.SameLexem(symbol);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static plain::Interpreter plain(L"", compositions::CompositionLanguage()->Blanks(),
                                    compositions::CompositionLanguage()->Tables());
    struct Step {
        std::uint32_t symbol;
        unsigned operation;
        unsigned start;  // 0 for where the last one ended
    };
    fuzz::Input input(data, size);
    Step steps[kOperations];
    for (Step& step : steps) {
        step.symbol = input.Below(64);
        step.operation = input.Below(5);
        step.start = input.Byte();
    }
    const std::string text(input.Bytes(kTextLimit));
    MatcherPair pair(text, plain);
    // Without any bytes there is no text at all, where the plain matcher has a blank.
    if (!text.empty()) {
        fuzz::Check(pair.SameText(text), "the cleaned texts differ");
        for (const Step& step : steps) {
            if (step.start != 0) pair.Start(step.start - 1);
            fuzz::Check(Operate(pair, step.operation, step.symbol), pair.Difference());
        }
    }
    captured::TakeDebugged();
    return 0;
}
