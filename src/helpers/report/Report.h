#pragma once

// Reports of error codes to the trace log, and the fixed lines for the debugger output. Every
// Report function writes one line for a code other than 0 and returns the code unchanged. Any
// thread.

#include <string>

#include "base_types/Errors.h"
#include "fx/Errors.h"
#include "tarnex/Errors.h"

namespace helpers {

// The enumerator's own name; the number in decimal for a code outside the enumeration.
std::string ErrorName(fx::_eError code);
std::string ErrorName(tarnex::_eError code);
std::string ErrorName(base_types::_eError code);

fx::_eError ReportFxError(fx::_eError code);
fx::_eError ReportFxError(fx::_eError code, const char* operation);
tarnex::_eError ReportTarnexError(tarnex::_eError code);
tarnex::_eError ReportTarnexError(tarnex::_eError code, const char* operation);
base_types::_eError ReportPropertyError(base_types::_eError code);
base_types::_eError ReportPropertyError(base_types::_eError code, const char* operation);
base_types::_eError ReportPropertyError(base_types::_eError code, const char* operation,
                                        const std::wstring& property);

// Debugger output: an exception that carried a code, and one of unknown type. The file and line are
// fixed texts of each operation, kept stable for whoever searches captured output.
void ReportException(std::uint32_t code, const char* file, int line, const char* name);
void ReportUnknownException(const char* file, int line, const char* name);

// Debugger output: a consistency check failed. Execution goes on.
void ReportAssertion(const char* file, int line, const char* name);

}  // namespace helpers
