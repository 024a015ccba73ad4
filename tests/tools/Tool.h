#pragma once

// Runs the program as a user would, and reads what it says.

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "frame/Json.h"
#include "platform/ChildProcess.h"

namespace tooltest {

using tarnexctl::Json;

struct ToolRun {
    int code = -1;
    std::string out;
    std::string err;
    bool ended = false;  // by itself
};

// The program, found beside the running test.
ToolRun RunTool(const std::vector<std::string>& arguments,
                const std::vector<std::pair<std::string, std::string>>& environment = {});

// Runs a command of the system's shell, which finds the program's path in $1. Only where there is
// such a shell.
ToolRun RunShell(const std::string& command, const std::string& shell = "/bin/sh");

// What a terminal of its own would have shown of the program: standard output and error in one.
std::string RunOnTerminal(const std::string& arguments, const std::string& environment = "");

// Adds --json, and expects exactly one document on standard output, whose "exit" is the exit code.
Json RunForJson(std::vector<std::string> arguments, int expectedCode,
                const std::vector<std::pair<std::string, std::string>>& environment = {});

// Folder of the built programs, and of the plug-ins that were built for the tests.
std::filesystem::path ProgramFolder();
std::string ToolPlugin(const std::string& name);  // of this folder's own
std::string TestPlugin(const std::string& name);  // of tests/plugins

// The codes of a document's findings, in order.
std::vector<std::string> CodesOf(const Json& findings);

// A folder of the test's own with a name that is not ASCII; gone at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    // Writes a file and returns its path in UTF-8.
    std::string Write(const std::string& name, const std::string& bytes) const;

private:
    std::filesystem::path path_;
};

}  // namespace tooltest
