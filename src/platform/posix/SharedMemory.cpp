#include "platform/SharedMemory.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace platform {
namespace {

// When this process started, in the kernel's ticks: with it a name is this process's alone.
std::string StartTime() {
    std::FILE* file = std::fopen("/proc/self/stat", "re");
    if (file == nullptr) return "0";
    char text[1024] = {};
    const std::size_t size = std::fread(text, 1, sizeof text - 1, file);
    std::fclose(file);
    text[size] = '\0';
    // The program's name stands in brackets and may hold anything; count fields behind it.
    const char* field = std::strrchr(text, ')');
    constexpr int kFieldsToStartTime = 20;
    for (int i = 0; field != nullptr && i < kFieldsToStartTime; ++i) {
        field = std::strchr(field + 1, ' ');
    }
    if (field == nullptr) return "0";
    return std::string(field + 1, std::strcspn(field + 1, " \n"));
}

// Whether this is `ours`, up to its process and start time, of a process that is no more.
bool IsLeftBehind(const std::string& name, const std::string& ours) {
    const auto processAt = [](const std::string& text) {
        const std::size_t startTime = text.rfind('_');
        if (startTime == std::string::npos || startTime == 0) return std::string::npos;
        return text.rfind('_', startTime - 1);
    };
    const std::size_t process = processAt(name);
    if (process == std::string::npos || processAt(ours) != process) return false;
    if (name.compare(0, process, ours, 0, process) != 0) return false;
    const long id = std::strtol(name.c_str() + process + 1, nullptr, 10);
    return id > 0 && kill(static_cast<pid_t>(id), 0) != 0 && errno == ESRCH;
}

// Every module that uses a memory keeps it locked shared, which ends with its process however that
// ended, and which those see, too, who number processes differently.
bool IsUnused(const std::string& name) {
    const int file = shm_open(name.c_str(), O_RDWR, 0);
    if (file < 0) return false;
    const bool unused = flock(file, LOCK_EX | LOCK_NB) == 0;
    close(file);
    return unused;
}

// Removes what processes that were killed left behind. Others' are out of reach, and stay.
void Sweep(const std::string& ours) noexcept {
    DIR* folder = opendir("/dev/shm");
    if (folder == nullptr) return;
    try {
        while (const dirent* entry = readdir(folder)) {
            const std::string name = std::string("/") + entry->d_name;
            if (IsLeftBehind(name, ours) && IsUnused(name)) shm_unlink(name.c_str());
        }
    } catch (...) {
        // Without memory; the next process sweeps.
    }
    closedir(folder);
}

// A new one of that size, or the one that is there; -1 on failure, with errno set.
int OpenMemory(const std::string& name, bool mayCreate, std::size_t size, bool& created) {
    created = false;
    const int existing = shm_open(name.c_str(), O_RDWR, 0);
    if (existing >= 0 || errno != ENOENT || !mayCreate) return existing;
    const int file = shm_open(name.c_str(), O_RDWR | O_CREAT | O_EXCL, 0600);
    if (file < 0) return -1;
    created = true;
    Sweep(name);
    if (ftruncate(file, static_cast<off_t>(size)) == 0) return file;
    const int error = errno;
    close(file);
    shm_unlink(name.c_str());
    errno = error;
    return -1;
}

void* Map(int file, std::size_t size) {
    struct stat status;
    if (fstat(file, &status) != 0) return nullptr;
    if (static_cast<std::size_t>(status.st_size) < size) {
        errno = EINVAL;  // touching what is not there would kill the process
        return nullptr;
    }
    void* data = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    return data == MAP_FAILED ? nullptr : data;
}

}  // namespace

SharedMemory::Outcome SharedMemory::Attach(const std::string& name, bool mayCreate,
                                           std::size_t size, std::uint32_t& error) {
    name_ = "/" + name + "_" + StartTime();
    bool created = false;
    const int file = OpenMemory(name_, mayCreate, size, created);
    if (file < 0 && errno == ENOENT && !mayCreate) return Outcome::kMissing;
    data_ = file >= 0 ? Map(file, size) : nullptr;
    error = data_ == nullptr ? static_cast<std::uint32_t>(errno) : 0;
    if (data_ == nullptr) {
        if (file >= 0) close(file);
        if (created) shm_unlink(name_.c_str());  // nobody would ever get it set up
        return Outcome::kFailed;
    }
    flock(file, LOCK_SH | LOCK_NB);
    handle_ = file;
    size_ = size;
    return created ? Outcome::kCreated : Outcome::kOpened;
}

void SharedMemory::Close(bool last) {
    if (data_ == nullptr) return;
    munmap(data_, size_);
    close(static_cast<int>(handle_));
    data_ = nullptr;
    if (last) shm_unlink(name_.c_str());
}

}  // namespace platform
