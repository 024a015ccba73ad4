#pragma once

#include <string>

#include "frame/Session.h"

namespace tarnexctl {

// Prints what a composition's script declares and puts it into the document. A Failure when the
// script cannot be read as a composition.
ExitCode DescribeComposition(const std::string& script, Session& session);

}  // namespace tarnexctl
