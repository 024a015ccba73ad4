#include "platform/MachineFlag.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstring>

namespace platform {
namespace {

// Opens the file that this code was loaded from, by its path in the process's list of mappings: the
// loader knows it only as it was asked for, which may be relative to a folder long left. Throws
// nothing, whatever memory there is: nobody could catch it while a library is loaded.
int OpenOwnFile() {
    std::FILE* maps = std::fopen("/proc/self/maps", "re");
    if (maps == nullptr) return -1;
    const auto self = reinterpret_cast<std::uintptr_t>(&TakeMachineFlag);
    int file = -1;
    bool found = false;
    char line[8192];
    while (!found && std::fgets(line, sizeof line, maps) != nullptr) {
        std::uintptr_t begin = 0;
        std::uintptr_t end = 0;
        int name = 0;
        if (std::sscanf(line, "%" SCNxPTR "-%" SCNxPTR " %*s %*s %*s %*s %n", &begin, &end,
                        &name) == 2 &&
            name > 0 && self >= begin && self < end) {
            found = true;
            line[std::strcspn(line, "\n")] = '\0';
            file = open(line + name, O_RDONLY | O_CLOEXEC);
        }
    }
    std::fclose(maps);
    return file;
}

enum class Locking { kDone, kTaken, kImpossible };

Locking Lock(int file, int operation) {
    while (flock(file, operation) != 0) {
        if (errno != EINTR) return errno == EWOULDBLOCK ? Locking::kTaken : Locking::kImpossible;
    }
    return Locking::kDone;
}

// The lock lies on the library's own file, as the byte on Windows lies in its image: nothing is
// left behind, nobody else's rights are in the way, and two copies of the library are two flags.
// Every process keeps it shared; who could have it exclusively found nobody before him.
class LockFile {
public:
    bool Take() {
        file_ = OpenOwnFile();
        if (file_ < 0) return true;  // a file that is gone can be loaded by nobody else
        // Where there are no locks everyone is first: two owners are better than none for ever.
        const bool first = Lock(file_, LOCK_EX | LOCK_NB) != Locking::kTaken;
        static_cast<void>(Lock(file_, LOCK_SH));
        return first;
    }
    ~LockFile() {
        if (file_ >= 0) close(file_);
    }

private:
    int file_ = -1;
};

}  // namespace

bool TakeMachineFlag() {
    static LockFile lock;  // until the library is unloaded
    return lock.Take();
}

}  // namespace platform
