#include "platform/BackgroundThread.h"

#include <pthread.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

namespace platform {

struct BackgroundThreadBody {
    static void* Run(void* argument) {
        auto* thread = static_cast<BackgroundThread*>(argument);
        // One step below normal; a system that does not allow it runs it as it is.
        const auto self = static_cast<id_t>(gettid());
        static_cast<void>(setpriority(PRIO_PROCESS, self, getpriority(PRIO_PROCESS, self) + 1));
        thread->run_(thread->argument_);
        return nullptr;
    }
};

bool BackgroundThread::Start(Function run, void* argument) {
    run_ = run;
    argument_ = argument;
    // The host's signals are for the host's threads.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    pthread_t thread;
    const bool started = pthread_create(&thread, nullptr, &BackgroundThreadBody::Run, this) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    handle_ = started ? static_cast<std::uint64_t>(thread) : 0;
    return started;
}

// Neither a thread's start nor its end needs the loader here.
void BackgroundThread::Ready() {}

bool BackgroundThread::Join() {
    if (handle_ == 0) return false;
    const bool joined = pthread_join(static_cast<pthread_t>(handle_), nullptr) == 0;
    handle_ = 0;
    return joined;
}

}  // namespace platform
