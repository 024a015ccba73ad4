#pragma once

// A script file, read whole. No byte-order mark is looked for and no code page applied. Not for
// several threads at once.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/File.h"

namespace helpers::scripting {

// String is the type of paths and, later, of the script's text.
template <class String>
class ScriptFile {
public:
    // Opens the file, refusing writers meanwhile, and reads it with one call. Not loaded: a file
    // that cannot be opened, is empty, is too large for a 32-bit length, or comes short.
    explicit ScriptFile(const String& path);
    virtual ~ScriptFile() = default;
    ScriptFile(const ScriptFile&) = delete;
    ScriptFile& operator=(const ScriptFile&) = delete;

    // The whole file was read.
    bool loaded() const { return loaded_; }
    // A character was asked for while there was no buffer.
    bool read_error() const { return readError_; }
    // The file's size plus one; 0 without a buffer.
    std::uint32_t Length() const { return length_; }
    // The file's bytes and the blank that always follows them, so that the last lexem ends.
    // Empty without a buffer; valid while the object lives.
    std::string_view Bytes() const { return {buffer_.get(), length_}; }
    // One byte of Bytes(); a blank, and read_error set, without a buffer. The index lies below
    // Length() when there is one.
    char Character(std::uint32_t index);

private:
    platform::InputFile file_;
    std::unique_ptr<char[]> buffer_;
    std::uint32_t length_ = 0;
    bool loaded_ = false;
    bool readError_ = false;
};

extern template class ScriptFile<std::wstring>;

}  // namespace helpers::scripting
