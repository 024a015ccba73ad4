#pragma once

// What a child process that runs plug-in code tells its parent: one JSON value per line, written at
// once, so that nothing is lost when the process ends at the next instruction.

#include <string>

#include "frame/Json.h"
#include "probe/Findings.h"

namespace tarnexctl {

class ChildReport {
public:
    // Takes the standard output for itself and makes crashes silent.
    ChildReport();

    // What is about to be done; the last one is where a crash or a hang happened.
    void Step(const std::string& what);
    void Add(const std::string& code, const std::string& detail);
    void Value(const std::string& key, const Json& value);

    // Everything was done; what still ends the process badly is the plug-in's farewell.
    void Done();

private:
    void Write(const Json& line);
};

}  // namespace tarnexctl
