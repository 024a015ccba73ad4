#pragma once

// Error codes of property access, and the exception that carries one.
// Used by hosts and plug-ins. The same number means another error in the other two enumerations.

#include <cstdint>

// Every code with its name: the one table behind the enumeration and ErrorName. The names are the
// texts that logs carry, so their spelling is kept letter for letter, odd ones included.
// clang-format off
#define TARNEX_PROPERTY_ERRORS(X) \
    X(0, eSuccess) \
    X(1, eWrongPropertyType) \
    X(2, eCantSetProperty) \
    X(3, eCantGetProperty) \
    X(4, ePropertyNotFound) \
    X(5, ePropertyNoAccessForReading) \
    X(6, ePropertyNoAccessForWriting) \
    X(7, ePropertyMinMaxNotSpecified) \
    X(8, ePropertyDefaultValNotSpecified) \
    X(9, eInvalidObject) \
    X(10, eThisObjectDoesNotHandleProperties) \
    X(11, eNotImplemented) \
    X(12, eGenericException) \
    X(13, eGenericError) \
    X(14, eNonInterfaceException) \
    X(15, ePointerCastFailure) \
    X(16, eOutOfRange) \
    X(17, eErrorUpdatingFixedFilter) \
    X(18, eFilterNotFound) \
    X(19, eCannotGetCloneInfo) \
    X(20, eCannotCloneEffect)
// clang-format on

namespace base_types {

enum _eError : std::uint32_t {
#define TARNEX_ENUMERATOR(code, name) name = (code),
    TARNEX_PROPERTY_ERRORS(TARNEX_ENUMERATOR)
#undef TARNEX_ENUMERATOR
};

// Carries a property error out of a property object. Thrown by value, caught by reference;
// the property set returns the code. Has no base on purpose.
class Exception {
public:
    explicit Exception(_eError error) : code(error) {}

    _eError code;
};

}  // namespace base_types
