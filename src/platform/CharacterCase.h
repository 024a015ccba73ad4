#pragma once

// Upper-casing as the system's C runtime does it. Any thread.

#include <cstddef>

namespace platform {

// Upper-cases in place, one character for one: in the C runtime's current locale on Windows, ASCII
// letters alone elsewhere. The text has no zero among its length characters, and one behind them.
void ToUpperCase(wchar_t* text, std::size_t length);

}  // namespace platform
