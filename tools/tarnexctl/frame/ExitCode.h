#pragma once

// How the program ends, and the exception that ends a command early.

#include <stdexcept>
#include <string>
#include <utility>

namespace tarnexctl {

enum class ExitCode : int {
    kFine = 0,
    kFindings = 1,     // the command did its work and found something wrong
    kUsage = 2,        // the command line makes no sense
    kNotFound = 3,     // a file, folder, effect or command that does not exist
    kInputOutput = 4,  // something exists but cannot be read, understood or written
    kPlugin = 5,       // a plug-in crashed, hung or ended the process
    kInternal = 6,     // a defect of this program
};

// The code's fixed name in JSON documents ("not-found").
const char* ExitCodeName(ExitCode code);

// One line each for the manual.
const char* ExitCodeMeaning(ExitCode code);

// Ends the running command: the message goes to standard error (and into the JSON document), the
// code becomes the program's exit code.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode code, const std::string& message, std::string hint = {})
        : std::runtime_error(message), code_(code), hint_(std::move(hint)) {}

    ExitCode Code() const { return code_; }
    // What to do about it; empty when nothing is known.
    const std::string& Hint() const { return hint_; }

private:
    ExitCode code_;
    std::string hint_;
};

}  // namespace tarnexctl
