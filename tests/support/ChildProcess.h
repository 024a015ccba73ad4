#pragma once

// A program started by a test, with its standard input and output in the test's hands. One thread.

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace test_support {

struct ChildOptions {
    std::filesystem::path folder;                    // the child's working folder
    std::filesystem::path errorFile;                 // receives its standard error
    std::map<std::string, std::string> environment;  // added to the test's own
    std::vector<std::string> arguments;              // without quotes or blanks
};

class ChildProcess {
public:
    // Starts the program; a failure to do so ends the test program.
    ChildProcess(const std::filesystem::path& program, const ChildOptions& options);
    // Closes both ends and waits.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    void WriteLine(const std::string& line);
    // The next line without its end; false when there is no more.
    bool ReadLine(std::string& line);
    // Ends the child without letting it do anything more.
    void Kill();
    // Closes the child's input, waits for its end and returns its exit code.
    int Wait();

private:
    bool Fill();

    std::intptr_t process_ = 0;
    std::intptr_t input_ = 0;
    std::intptr_t output_ = 0;
    int exitCode_ = -1;
    bool ended_ = false;
    std::string pending_;
};

// A child calls it first: what it writes to the debugger output goes to its standard error too, and
// no process that it starts, knowingly or not, keeps its standard handles open.
void BeginChild();

}  // namespace test_support
