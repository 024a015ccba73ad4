#include "platform/File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/NativePath.h"

namespace platform {
namespace {

int Native(std::intptr_t handle) {
    return static_cast<int>(handle);
}

}  // namespace

bool InputFile::Open(const std::wstring& path) {
    Close();
    // A pipe of that name must not hold the caller up until somebody writes to it.
    const int file = open(NativePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status;
    if (file >= 0 && (fstat(file, &status) != 0 || !S_ISREG(status.st_mode))) {
        close(file);  // a folder opens here, too
        return false;
    }
    handle_ = file;
    return IsOpen();
}

bool InputFile::IsOpen() const {
    return handle_ >= 0;
}

bool InputFile::Size(std::uint64_t& size) const {
    struct stat status;
    if (!IsOpen() || fstat(Native(handle_), &status) != 0) return false;
    size = static_cast<std::uint64_t>(status.st_size);
    return true;
}

std::size_t InputFile::Read(void* buffer, std::size_t size) {
    // The system may hand out less than it has; the caller asked for one read of it all.
    std::size_t count = 0;
    while (IsOpen() && count < size) {
        const ssize_t got = read(Native(handle_), static_cast<char*>(buffer) + count, size - count);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        count += static_cast<std::size_t>(got);
    }
    return count;
}

void InputFile::Close() {
    if (IsOpen()) close(Native(handle_));
    handle_ = -1;
}

bool LastWriteTime(const std::wstring& path, std::uint64_t& time) {
    struct stat status;
    if (stat(NativePath(path).c_str(), &status) != 0) return false;
    time = static_cast<std::uint64_t>(status.st_mtim.tv_sec) * 10'000'000 +
           static_cast<std::uint64_t>(status.st_mtim.tv_nsec) / 100;
    return true;
}

}  // namespace platform
