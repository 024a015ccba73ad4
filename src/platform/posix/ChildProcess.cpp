#include "platform/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr int kGraceRounds = 50;

// Both ends of a pipe; closed by the destructor where nobody closed them before.
struct Pipe {
    Pipe() { valid = pipe2(ends.data(), O_CLOEXEC) == 0; }
    ~Pipe() {
        CloseEnd(0);
        CloseEnd(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void CloseEnd(int end) {
        if (ends[end] >= 0) close(ends[end]);
        ends[end] = -1;
    }

    std::array<int, 2> ends = {-1, -1};
    bool valid = false;
};

bool StartsWith(const char* text, const std::string& prefix) {
    return std::strncmp(text, prefix.c_str(), prefix.size()) == 0;
}

std::vector<std::string> Environment(const ChildRequest& request) {
    std::vector<std::string> all;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const bool replaced =
            std::any_of(request.environment.begin(), request.environment.end(),
                        [&](const auto& added) { return StartsWith(*entry, added.first + "="); });
        if (!replaced) all.emplace_back(*entry);
    }
    for (const auto& [name, value] : request.environment) {
        all.emplace_back(name).append("=").append(value);
    }
    return all;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// Starts the program in a process group of its own. 0 or an error number.
int Spawn(const ChildRequest& request, const Pipe& output, const Pipe& error, pid_t& child) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output.ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, error.ends[1], STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);

    std::vector<std::string> arguments = {request.program};
    arguments.insert(arguments.end(), request.arguments.begin(), request.arguments.end());
    std::vector<std::string> environment = Environment(request);
    const int result = posix_spawn(&child, request.program.c_str(), &actions, &attributes,
                                   Pointers(arguments).data(), Pointers(environment).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return result;
}

// Takes what there is to read; false at the end of the stream.
bool Drain(int descriptor, std::string& text, std::size_t limit) {
    char buffer[65536];
    const ssize_t count = read(descriptor, buffer, sizeof buffer);
    if (count < 0) return errno == EINTR || errno == EAGAIN;
    if (count == 0) return false;
    const std::size_t room = limit - std::min(limit, text.size());
    text.append(buffer, std::min(room, static_cast<std::size_t>(count)));
    return true;
}

// Reads both pipes, waiting up to `wait` for something to come; false when both have ended.
bool ReadPipes(Pipe& output, Pipe& error, ChildResult& result, std::size_t limit,
               std::chrono::milliseconds wait) {
    std::array<pollfd, 2> polled = {pollfd{output.ends[0], POLLIN, 0},
                                    pollfd{error.ends[0], POLLIN, 0}};
    poll(polled.data(), polled.size(), static_cast<int>(wait.count()));
    if (polled[0].revents != 0 && !Drain(output.ends[0], result.output, limit)) output.CloseEnd(0);
    if (polled[1].revents != 0 && !Drain(error.ends[0], result.error, limit)) error.CloseEnd(0);
    return output.ends[0] >= 0 || error.ends[0] >= 0;
}

void Describe(int status, ChildResult& result) {
    if (WIFSIGNALED(status)) {
        result.end = ChildEnd::kCrashed;
        result.code = static_cast<std::uint32_t>(WTERMSIG(status));
        result.reason =
            "signal " + std::to_string(result.code) + " (" + strsignal(WTERMSIG(status)) + ")";
    } else {
        result.end = ChildEnd::kExited;
        result.code = static_cast<std::uint32_t>(WEXITSTATUS(status));
    }
}

// Reads until the child has ended or its time is over. Descendants may hold the pipes for longer
// than the child lives: they are not waited for.
void Attend(pid_t child, Pipe& output, Pipe& error, const ChildRequest& request,
            ChildResult& result) {
    const auto deadline = Clock::now() + std::chrono::milliseconds(request.timeoutMs);
    int status = 0;
    bool open = true;
    for (;;) {
        if (open) {
            open = ReadPipes(output, error, result, request.outputLimit, 20ms);
        } else {
            poll(nullptr, 0, 1);
        }
        if (waitpid(child, &status, WNOHANG) == child) {
            Describe(status, result);
            break;
        }
        if (Clock::now() >= deadline) {
            kill(-child, SIGKILL);
            waitpid(child, &status, 0);
            result.end = ChildEnd::kTimedOut;
            result.reason = "no end within " + std::to_string(request.timeoutMs) + " ms";
            break;
        }
    }
    kill(-child, SIGKILL);  // whatever it has left behind
    // Counted and not timed: a busy machine is no reason to leave something unread.
    for (int round = 0; open && round < kGraceRounds; ++round) {
        open = ReadPipes(output, error, result, request.outputLimit, 10ms);
    }
}

}  // namespace

ChildResult RunChild(const ChildRequest& request) {
    ChildResult result;
    Pipe output, error;
    if (!output.valid || !error.valid) {
        result.reason = std::strerror(errno);
        return result;
    }
    pid_t child = -1;
    if (const int problem = Spawn(request, output, error, child); problem != 0) {
        result.reason = std::strerror(problem);
        return result;
    }
    output.CloseEnd(1);
    error.CloseEnd(1);
    Attend(child, output, error, request, result);
    return result;
}

void CrashQuietly() {
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) signal(number, SIG_DFL);
}

void EndProcess(int code) {
    _exit(code);
}

}  // namespace platform
