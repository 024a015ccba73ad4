#pragma once

#include <cstddef>
#include <cstdint>

namespace helpers {

// Where the bytes of a log go. Writing the same bytes at the same position again changes nothing.
class LogSink {
public:
    virtual ~LogSink() = default;
    virtual bool WriteAt(std::uint64_t position, const char* bytes, std::size_t size) = 0;
};

}  // namespace helpers
