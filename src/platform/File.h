#pragma once

// Reading files and their times. A backslash separates folders on every system.

#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {

// A file opened for reading; others may read it meanwhile, not write. Closed by the destructor.
class InputFile {
public:
    InputFile() = default;
    ~InputFile() { Close(); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    bool Open(const std::wstring& path);
    bool IsOpen() const;
    bool Size(std::uint64_t& size) const;
    // Reads up to `size` bytes with one call and returns how many came.
    std::size_t Read(void* buffer, std::size_t size);
    void Close();

private:
    std::intptr_t handle_ = -1;
};

// When the file was last written, in 100-nanosecond units; false when it does not exist.
bool LastWriteTime(const std::wstring& path, std::uint64_t& time);

}  // namespace platform
