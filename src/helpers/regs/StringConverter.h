#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace helpers::regs {

// Makes a wide string of a value's bytes, which are UTF-16 text.
class StringConverter {
public:
    // The bytes cannot be converted.
    class Exception {};

    // Drops the terminators at the end. Throws Exception when a code unit is cut in half.
    static std::wstring Convert(const std::uint8_t* bytes, std::size_t size);
};

}  // namespace helpers::regs
