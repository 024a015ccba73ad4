#include "support/ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace test_support {

namespace {

void Require(bool fine, const char* what) {
    if (!fine) {
        std::perror(what);
        std::abort();
    }
}

[[noreturn]] void Run(const std::filesystem::path& program, const ChildOptions& options, int in,
                      int out) {
    const int error = open(options.errorFile.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(error, STDERR_FILENO);
    for (const auto& [name, value] : options.environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<char*> arguments{const_cast<char*>(program.c_str())};
    for (const std::string& argument : options.arguments) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    if (chdir(options.folder.c_str()) == 0) {
        execv(program.c_str(), arguments.data());
    }
    std::perror(program.c_str());
    _exit(127);
}

}  // namespace

ChildProcess::ChildProcess(const std::filesystem::path& program, const ChildOptions& options) {
    signal(SIGPIPE, SIG_IGN);
    int in[2];
    int out[2];
    Require(pipe2(in, O_CLOEXEC) == 0 && pipe2(out, O_CLOEXEC) == 0, "pipe");
    const pid_t pid = fork();
    Require(pid >= 0, "fork");
    if (pid == 0) {
        Run(program, options, in[0], out[1]);
    }
    close(in[0]);
    close(out[1]);
    process_ = pid;
    input_ = in[1];
    output_ = out[0];
}

void ChildProcess::WriteLine(const std::string& line) {
    const std::string text = line + '\n';
    for (std::size_t sent = 0; sent < text.size();) {
        const ssize_t count =
            write(static_cast<int>(input_), text.data() + sent, text.size() - sent);
        if (count <= 0) {
            return;  // the child is gone: the next read tells
        }
        sent += static_cast<std::size_t>(count);
    }
}

bool ChildProcess::Fill() {
    if (ended_) {
        return false;
    }
    char bytes[4096];
    const ssize_t count = read(static_cast<int>(output_), bytes, sizeof bytes);
    if (count <= 0) {
        return false;
    }
    pending_.append(bytes, static_cast<std::size_t>(count));
    return true;
}

void ChildProcess::Kill() {
    kill(static_cast<pid_t>(process_), SIGKILL);
}

int ChildProcess::Wait() {
    if (!ended_) {
        close(static_cast<int>(input_));
        while (Fill()) {
        }
        close(static_cast<int>(output_));
        int status = 0;
        waitpid(static_cast<pid_t>(process_), &status, 0);
        exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        ended_ = true;
    }
    return exitCode_;
}

void BeginChild() {
    setenv("TARNEX_DEBUG_OUTPUT", "1", 1);
}

}  // namespace test_support
