#include "SystemFault.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace {

using test_support::Fate;
using test_support::SystemCall;

// relaxed throughout; set while one thread runs, and an order between calls means nothing here.
std::atomic<int> remaining{0};  // calls until the fault; 0 for none
std::atomic<bool> happened{false};
SystemCall faulty;
Fate fate;
bool lasting;

// Whether this call meets its fate.
bool Meets(SystemCall call) {
    if (call != faulty) return false;
    if (happened.load(std::memory_order_relaxed) && lasting) return true;
    int left = remaining.load(std::memory_order_relaxed);
    while (left > 0 &&
           !remaining.compare_exchange_weak(left, left - 1, std::memory_order_relaxed)) {
    }
    if (left != 1) return false;
    happened.store(true, std::memory_order_relaxed);
    return true;
}

bool Fails(SystemCall call) {
    if (!Meets(call) || fate != Fate::kFails) return false;
    switch (call) {
        case SystemCall::kOpen:
            errno = EMFILE;
            break;
        case SystemCall::kLock:
            errno = ENOLCK;
            break;
        default:
            errno = EIO;
    }
    return true;
}

// The system's own function of that name.
template <class Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// What becomes of moving `count` bytes: that many go on to the system, or the answer is `result`.
struct Moved {
    std::size_t count;
    bool ends;
    ssize_t result;
};

Moved Move(SystemCall call, std::size_t count) {
    const bool again = happened.load(std::memory_order_relaxed);
    if (!Meets(call)) return {count, false, 0};
    switch (fate) {
        case Fate::kFails:
            errno = EIO;
            return {0, true, -1};
        case Fate::kShort:
            return {count > 1 ? count / 2 : count, false, 0};
        case Fate::kBreaksOff:
            if (!again) return {count / 2, false, 0};
            break;
        case Fate::kEnds:
            break;
    }
    errno = ENOSPC;
    return {0, true, call == SystemCall::kWrite ? -1 : 0};
}

mode_t ModeOf(int flags, va_list arguments) {
    return (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(arguments, unsigned)) : 0;
}

}  // namespace

// NOLINTBEGIN: names and forms are the C library's. Visible, so that libraries find them, too.
#pragma GCC visibility push(default)
extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    static const auto next = Next<int(const char*, int, ...)>("open");
    return Fails(SystemCall::kOpen) ? -1 : next(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeOf(flags, arguments);
    va_end(arguments);
    static const auto next = Next<int(const char*, int, ...)>("open64");
    return Fails(SystemCall::kOpen) ? -1 : next(path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
    static const auto next = Next<FILE*(const char*, const char*)>("fopen");
    return Fails(SystemCall::kOpen) ? nullptr : next(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    static const auto next = Next<FILE*(const char*, const char*)>("fopen64");
    return Fails(SystemCall::kOpen) ? nullptr : next(path, mode);
}

int stat(const char* path, struct stat* status) noexcept {
    static const auto next = Next<int(const char*, struct stat*)>("stat");
    return Fails(SystemCall::kLook) ? -1 : next(path, status);
}

int fstat(int file, struct stat* status) noexcept {
    static const auto next = Next<int(int, struct stat*)>("fstat");
    return Fails(SystemCall::kLook) ? -1 : next(file, status);
}

off64_t lseek64(int file, off64_t offset, int from) noexcept {
    static const auto next = Next<off64_t(int, off64_t, int)>("lseek64");
    return Fails(SystemCall::kLook) ? -1 : next(file, offset, from);
}

ssize_t read(int file, void* bytes, size_t size) {
    static const auto next = Next<ssize_t(int, void*, size_t)>("read");
    const Moved moved = Move(SystemCall::kRead, size);
    return moved.ends ? moved.result : next(file, bytes, moved.count);
}

ssize_t write(int file, const void* bytes, size_t size) {
    static const auto next = Next<ssize_t(int, const void*, size_t)>("write");
    const Moved moved = Move(SystemCall::kWrite, size);
    return moved.ends ? moved.result : next(file, bytes, moved.count);
}

ssize_t writev(int file, const struct iovec* pieces, int count) {
    static const auto next = Next<ssize_t(int, const struct iovec*, int)>("writev");
    const Moved moved = Move(SystemCall::kWrite, static_cast<std::size_t>(count));
    return moved.ends ? moved.result : next(file, pieces, static_cast<int>(moved.count));
}

ssize_t pwrite(int file, const void* bytes, size_t size, off_t position) {
    static const auto next = Next<ssize_t(int, const void*, size_t, off_t)>("pwrite");
    const Moved moved = Move(SystemCall::kWrite, size);
    return moved.ends ? moved.result : next(file, bytes, moved.count, position);
}

int fsync(int file) {
    static const auto next = Next<int(int)>("fsync");
    return Fails(SystemCall::kWrite) ? -1 : next(file);
}

int rename(const char* from, const char* to) noexcept {
    static const auto next = Next<int(const char*, const char*)>("rename");
    return Fails(SystemCall::kMove) ? -1 : next(from, to);
}

int unlink(const char* path) noexcept {
    static const auto next = Next<int(const char*)>("unlink");
    return Fails(SystemCall::kMove) ? -1 : next(path);
}

int mkdir(const char* path, mode_t mode) noexcept {
    static const auto next = Next<int(const char*, mode_t)>("mkdir");
    return Fails(SystemCall::kMove) ? -1 : next(path, mode);
}

int flock(int file, int operation) noexcept {
    static const auto next = Next<int(int, int)>("flock");
    return Fails(SystemCall::kLock) ? -1 : next(file, operation);
}

int shm_open(const char* name, int flags, mode_t mode) {
    static const auto next = Next<int(const char*, int, mode_t)>("shm_open");
    return Fails(SystemCall::kMemory) ? -1 : next(name, flags, mode);
}

int ftruncate(int file, off_t size) noexcept {
    static const auto next = Next<int(int, off_t)>("ftruncate");
    return Fails(SystemCall::kMemory) ? -1 : next(file, size);
}

void* mmap(void* where, size_t size, int access, int flags, int file, off_t offset) noexcept {
    static const auto next = Next<void*(void*, size_t, int, int, int, off_t)>("mmap");
    // Anonymous memory is the heap's business.
    const bool named = (flags & MAP_ANONYMOUS) == 0;
    return named && Fails(SystemCall::kMemory) ? MAP_FAILED
                                               : next(where, size, access, flags, file, offset);
}

int eventfd(unsigned count, int flags) noexcept {
    static const auto next = Next<int(unsigned, int)>("eventfd");
    return Fails(SystemCall::kEvent) ? -1 : next(count, flags);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) noexcept {
    static const auto next =
        Next<int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>("pthread_create");
    return Fails(SystemCall::kThread) ? EAGAIN : next(thread, attributes, run, argument);
}

}  // extern "C"
#pragma GCC visibility pop

// Finds every function of the system before anybody needs one: looking for it takes the loader's
// lock, which whoever unloads a library holds while he waits for its thread. The calls do nothing.
[[gnu::constructor]] static void FindAll() {
    struct stat status;
    close(open("/dev/null", O_RDONLY));
    close(open64("/dev/null", O_RDONLY));
    if (FILE* file = fopen("/dev/null", "r")) fclose(file);
    if (FILE* file = fopen64("/dev/null", "r")) fclose(file);
    long results = stat("", &status) + fstat(-1, &status) + lseek64(-1, 0, SEEK_SET);
    results += read(-1, &status, 0) + write(-1, &status, 0) + writev(-1, nullptr, 0);
    results += pwrite(-1, &status, 0, 0) + fsync(-1) + rename("", "") + unlink("") + mkdir("", 0);
    results += flock(-1, 0) + shm_open("", O_RDONLY, 0) + ftruncate(-1, 0);
    mmap(nullptr, 0, PROT_READ, MAP_SHARED, -1, 0);
    close(eventfd(0, 0));
    pthread_t thread;
    if (pthread_create(
            &thread, nullptr, [](void*) -> void* { return nullptr; }, nullptr) == 0) {
        pthread_join(thread, nullptr);
    }
    static_cast<void>(results);
}
// NOLINTEND

namespace test_support {

SystemFault::SystemFault(SystemCall call, int countdown, bool lasts, Fate what) {
    faulty = call;
    fate = what;
    lasting = lasts;
    happened.store(false, std::memory_order_relaxed);
    remaining.store(countdown, std::memory_order_relaxed);
}

SystemFault::~SystemFault() {
    remaining.store(0, std::memory_order_relaxed);
    happened.store(false, std::memory_order_relaxed);
}

bool SystemFault::Happened() const {
    return happened.load(std::memory_order_relaxed);
}

}  // namespace test_support
