#pragma once

// What a command is: one record that the command line's parser, the help, the shell completions and
// the manual page are all made from. A command is one file in commands/ with one function that
// returns its record, and one line in CommandTable.cpp.

#include <string>
#include <vector>

#include "frame/Arguments.h"
#include "frame/ExitCode.h"

namespace tarnexctl {

class Session;

// What a value is, so that shells can complete it.
enum class ValueKind { kText, kNumber, kFile, kFolder, kChoice };

struct OptionSpec {
    std::string name;       // "--plugin"; also the key in Arguments
    std::string shortName;  // "-p", or empty
    std::string value;      // what the value is called in help; empty for a switch
    std::string help;
    ValueKind kind = ValueKind::kText;
    std::vector<std::string> choices = {};  // of kChoice
    bool repeats = false;
};

struct ArgumentSpec {
    std::string name;  // "FILE"; also the key in Arguments
    std::string help;
    ValueKind kind = ValueKind::kText;
    std::vector<std::string> choices = {};
    bool required = true;
    bool repeats = false;
};

struct ExampleSpec {
    std::string line;  // as typed, without the prompt
    std::string what;
};

struct CommandSpec {
    std::string name;
    std::string summary;                   // one line, no full stop
    std::vector<std::string> description;  // one paragraph each
    std::vector<ArgumentSpec> arguments;
    std::vector<OptionSpec> options;  // those of every command are added by the frame
    std::vector<ExampleSpec> examples;
    ExitCode (*run)(const Arguments& arguments, Session& session);
    bool hidden = false;  // runs, but is not offered to people
};

}  // namespace tarnexctl
