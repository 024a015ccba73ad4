#pragma once

#include <string>

#include "helpers/scripting/RandomTexts.h"

// Makes a short text and a small grammar, with malformed nodes if wanted, and compares every
// operation on every symbol of it with the plain matcher's. The first difference in words; empty
// when there is none. For programs that capture the output.
std::string DifferenceOnRandomGrammar(generated::Random& random, bool malformed);
