#pragma once

// A file that is written at positions, without a buffer or a lock of its own, so that whoever takes
// over from a dead thread can write the same bytes again. Caller serialises.

#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {

class OutputFile {
public:
    OutputFile() = default;
    ~OutputFile() { Close(); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Creates the file or empties it; others may read and write it meanwhile.
    bool Open(const std::wstring& path);
    bool IsOpen() const { return handle_ != kNone; }
    // False when not all of it could be written: the file then ends at `position`, so that nothing
    // stays half written.
    bool WriteAt(std::uint64_t position, const char* bytes, std::size_t size);
    void Close();

private:
    static constexpr std::intptr_t kNone = -1;
    std::intptr_t handle_ = kNone;
};

// Makes the folder, whose parent must be there; false when it is not there afterwards.
bool MakeFolder(const std::wstring& path);

// Adds bytes to the end of a file, which is made when it is missing; false when that fails.
bool AppendToFile(const std::wstring& path, const char* bytes, std::size_t size);

// The form of a text in a text file of this system: a line feed gains a carriage return where lines
// end so. `out` has room for twice the bytes; returns how many were written.
std::size_t ToTextMode(const char* text, std::size_t size, char* out);

}  // namespace platform
