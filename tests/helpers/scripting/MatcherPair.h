#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "compositions/language/CompInterpreter.h"
#include "helpers/scripting/PlainInterpreter.h"

// The real matcher of the composition language and the plain one over one text: each operation is
// called on both, and everything that a caller can see afterwards must be the same.
class MatcherPair {
public:
    // The plain matcher, which has the language's tables, is given the text. Both stay the
    // caller's.
    MatcherPair(const std::string& bytes, plain::Interpreter& plain);

    void Start(std::size_t position);
    // Each says whether the two agree.
    bool SameText(const std::string& bytes);
    bool SameMatch(std::uint32_t symbol);
    bool SameViews(std::uint32_t symbol);
    bool SameFind(std::uint32_t symbol, bool peek);
    bool SameLexem(std::uint32_t kind);

    // What the last operation left behind on both, in words.
    const std::string& Difference() const { return difference_; }

private:
    bool Same(bool found, const std::vector<std::wstring>& pieces, bool plainFound,
              const std::vector<std::wstring>& plainPieces);

    compositions::CompInterpreter real_;
    plain::Interpreter& plain_;
    std::string difference_;
};
