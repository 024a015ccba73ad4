#include "platform/Console.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace platform {
namespace {

int g_output = STDOUT_FILENO;

int Descriptor(Stream stream) {
    return stream == Stream::kOutput ? g_output : STDERR_FILENO;
}

}  // namespace

void PrepareConsole() {}

std::vector<std::string> ProgramArguments(int argc, char** argv) {
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>{};
}

bool IsTerminal(Stream stream) {
    return isatty(Descriptor(stream)) == 1;
}

bool WriteStream(Stream stream, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(Descriptor(stream), text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void ReserveOutput() {
    const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    if (own < 0) return;
    g_output = own;
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

std::string EnvironmentVariable(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::string() : value;
}

const char* SystemName() {
    return "Linux x64";
}

}  // namespace platform
