#pragma once

// Lets a failed comparison show a description's text.

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "compositions/WideText.h"

namespace compositions {

template <std::size_t kBytesInPlace>
void PrintTo(const BasicWideText<kBytesInPlace>& text, std::ostream* out) {
    *out << testing::PrintToString(std::wstring(text));
}

}  // namespace compositions
