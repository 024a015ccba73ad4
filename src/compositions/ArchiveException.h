#pragma once

#include <stdexcept>

namespace compositions {

// Thrown inside the script archive when its bytes end early or cannot be written. ScriptArchive
// catches it: no caller sees one.
class arch_exception : public std::runtime_error {
public:
    arch_exception() : std::runtime_error("script archive error") {}
};

}  // namespace compositions
