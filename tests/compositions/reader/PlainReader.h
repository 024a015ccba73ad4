#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "compositions/CompositionDescription.h"

// What a reader needs of a script toolkit: the slow, obvious matcher stands behind these.
struct PlainToolkit {
    std::function<bool(std::uint32_t rule, std::vector<std::wstring>& pieces)> getExpression;
    std::function<bool(std::uint32_t rule)> findExpression;
    std::function<bool(std::uint32_t kind, std::wstring& text)> getLexem;
    std::function<std::size_t()> position;
    std::function<void(std::size_t)> setPosition;
};

struct PlainResult {
    compositions::CompositionDescription description;
    std::vector<std::uint32_t> mappingAccess;  // equality of mappings leaves it out
    std::int32_t readStatus = 0;
    // In the order of reading; -1 for a section that was not reached.
    std::vector<std::int32_t> sections;
    int assertions = 0;
    bool titleTraced = false;
};

// Reads a script as slowly and literally as possible: lists are searched from the front, statements
// are matched part by part. The real reader must come to the same.
PlainResult ReadPlainly(const PlainToolkit& toolkit);
