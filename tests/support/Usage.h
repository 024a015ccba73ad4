#pragma once

// What the running process holds of the system, so that tests can see whether it grows.

#include <cstdint>
#include <string>

namespace test_support {

struct Usage {
    std::int64_t handles = 0;  // open handles or descriptors
    std::int64_t threads = 0;
    std::int64_t mappings = 0;   // named memory and mapped files, libraries and the heap left out
    std::int64_t heapBytes = 0;  // in use; 0 where a sanitizer has taken the heap over
};

Usage CountUsage();

// The least of each figure within `looks` looks 10 ms apart, or until none but the heap's is above
// `enough`: a thread of the system's, and what it holds, is given that time to be gone.
Usage LeastUsage(int looks, const Usage& enough);

// "handles 0 threads 0 mappings 0 bytes 0": what has been added.
std::string Growth(const Usage& before, const Usage& after);

}  // namespace test_support
