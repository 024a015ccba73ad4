#pragma once

// A host process over the built library, in a folder of its own, and what it left behind.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/Library.h"
#include "support/Text.h"

namespace host_test {

using test_support::Utf8;

// The running test's own folder, empty at first.
class Sandbox {
public:
    Sandbox();

    const std::filesystem::path& Folder() const { return folder_; }
    // Copies test plug-ins into `folder` (of the sandbox) and returns the list that names them.
    std::string AddPlugins(const std::vector<std::string>& names, const std::string& folder = "");
    std::filesystem::path PluginSource(const std::string& file) const;
    // What the log files of the sandbox say, in order of the files' names: each message without
    // time and thread, the program's name at the top of a file left out.
    std::vector<std::string> LogMessages() const;
    std::size_t LogFiles() const;
    // Everything that hosts of this sandbox wrote to the debugger output.
    std::vector<std::string> DebugLines() const;

private:
    std::filesystem::path folder_;
};

class Host {
public:
    explicit Host(const Sandbox& sandbox, const test_support::ScopedLogSettings* log = nullptr);

    // Runs a command and returns the answer's lines, joined with line feeds.
    std::string Do(const std::vector<std::string>& command);
    // The two halves of it, for a command that does not end: what it says is read line by line.
    void Send(const std::vector<std::string>& command);
    bool NextLine(std::string& line) { return process_->ReadLine(line); }
    // Loads the sandbox's library, gets the manager and builds a factory over plug-ins that are in
    // the sandbox's folder.
    void Start(const std::string& pluginList);
    int Finish() { return process_->Wait(); }
    void Kill() { process_->Kill(); }
    // Lines that came outside any command.
    std::string Rest();

private:
    std::filesystem::path library_;
    std::filesystem::path folder_;
    std::unique_ptr<test_support::ChildProcess> process_;
};

// A test with a sandbox, logging on.
class HostTest : public testing::Test {
protected:
    Sandbox sandbox_;
    test_support::ScopedLogSettings log_{test_support::LogSettings{}, sandbox_.Folder()};
};

}  // namespace host_test
