#pragma once

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <functional>

// Runs the work on a thread of 256 KiB of stack: recursion over input does not survive it.
inline void RunOnSmallStack(std::function<void()> work) {
    constexpr std::size_t kStackBytes = 256 * 1024;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackBytes), 0);
    pthread_t thread;
    const auto run = [](void* task) -> void* {
        (*static_cast<std::function<void()>*>(task))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}
