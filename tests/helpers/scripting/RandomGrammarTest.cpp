// The toolkit against the plain matcher on generated grammars: every flag, malformed nodes, rules
// that call each other, and the consistency reports.

#include <gtest/gtest.h>

#include "helpers/scripting/GrammarComparison.h"

namespace {

TEST(RandomGrammar, WellFormedGrammarsMatchAsThePlainMatcherMatches) {
    for (std::uint64_t seed = 0; seed < TARNEX_GENERATED_TEXTS / 200; ++seed) {
        generated::Random random(seed);
        ASSERT_EQ(DifferenceOnRandomGrammar(random, false), "") << "seed " << seed;
    }
}

TEST(RandomGrammar, MalformedGrammarsMatchAndReportAsThePlainMatcherDoes) {
    for (std::uint64_t seed = 0; seed < TARNEX_GENERATED_TEXTS / 200; ++seed) {
        generated::Random random(seed);
        ASSERT_EQ(DifferenceOnRandomGrammar(random, true), "") << "seed " << seed;
    }
}

}  // namespace
