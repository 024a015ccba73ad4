#pragma once

#include "check/Diagnostics.h"
#include "check/Subject.h"

namespace tarnexctl {

// Keys whose time lies before that of the key in front of them.
void CheckKeyTimes(const Subject& subject, const RecordedStatement& statement,
                   const compositions::Envelope& envelope, Diagnostics& diagnostics);

// A number of the language: digits, perhaps "-" in front and a fraction behind, blanks between.
double NumberValue(std::wstring_view number);

}  // namespace tarnexctl
