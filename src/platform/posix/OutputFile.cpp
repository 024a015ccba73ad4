#include "platform/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/NativePath.h"

namespace platform {

bool OutputFile::Open(const std::wstring& path) {
    Close();
    handle_ = open(NativePath(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    return IsOpen();
}

bool OutputFile::WriteAt(std::uint64_t position, const char* bytes, std::size_t size) {
    const int file = static_cast<int>(handle_);
    for (std::size_t done = 0; done != size;) {
        const ssize_t count =
            pwrite(file, bytes + done, size - done, static_cast<off_t>(position + done));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            // Where that fails, too, there is nothing left to try.
            static_cast<void>(!ftruncate(file, static_cast<off_t>(position)));
            return false;
        }
        done += static_cast<std::size_t>(count);
    }
    return true;
}

void OutputFile::Close() {
    if (IsOpen()) close(static_cast<int>(handle_));
    handle_ = kNone;
}

bool MakeFolder(const std::wstring& path) {
    const NativeString native = NativePath(path);
    struct stat found;
    return mkdir(native.c_str(), 0777) == 0 ||
           (stat(native.c_str(), &found) == 0 && S_ISDIR(found.st_mode));
}

bool AppendToFile(const std::wstring& path, const char* bytes, std::size_t size) {
    const int file =
        open(NativePath(path).c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (file < 0) return false;
    const bool written = write(file, bytes, size) == static_cast<ssize_t>(size);
    close(file);
    return written;
}

std::size_t ToTextMode(const char* text, std::size_t size, char* out) {
    std::memcpy(out, text, size);
    return size;
}

}  // namespace platform
