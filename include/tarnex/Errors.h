#pragma once

// Error codes of the plug-in manager, and the exception that carries one. The chief header of the
// three enumerations: it brings those of effects and of properties along.

#include <cstdint>

#include "base_types/Errors.h"
#include "fx/Errors.h"

// Every code with its name: the one table behind the enumeration and ErrorName. The names are the
// texts that logs carry, so their spelling is kept letter for letter, odd ones included.
// clang-format off
#define TARNEX_MANAGER_ERRORS(X) \
    X(0, eSuccess) \
    X(1, eNotImplemented) \
    X(2, eErrorCreatingFxFactory) \
    X(3, eCouldNotRegisterNewComposition) \
    X(4, eErrorCreatingEffect) \
    X(5, eWrongFXName) \
    X(6, eVorelExceptionCatched) \
    X(7, eTarnexLockedByOtherProcess) \
    X(8, eNonInterfaceException) \
    X(9, eGenericException) \
    X(10, eGenericError)
// clang-format on

namespace tarnex {

enum _eError : std::uint32_t {
#define TARNEX_ENUMERATOR(code, name) name = (code),
    TARNEX_MANAGER_ERRORS(TARNEX_ENUMERATOR)
#undef TARNEX_ENUMERATOR
};

// Carries a manager error to the interface operation that reports and returns it. Thrown by value,
// caught by reference. Has no base on purpose.
class Exception {
public:
    explicit Exception(_eError error) : code(error) {}

    _eError code;
};

}  // namespace tarnex
