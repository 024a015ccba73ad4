#include "support/SmallStack.h"

#include <pthread.h>

#include <cstddef>
#include <cstdlib>

void RunOnSmallStack(const std::function<void()>& work) {
    constexpr std::size_t kStackBytes = 256 * 1024;
    const auto run = [](void* task) -> void* {
        (*static_cast<const std::function<void()>*>(task))();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_t thread;
    const bool started =
        pthread_attr_setstacksize(&attributes, kStackBytes) == 0 &&
        pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)) == 0;
    pthread_attr_destroy(&attributes);
    if (!started || pthread_join(thread, nullptr) != 0) std::abort();
}
