#pragma once

// The archive of a composition: a description as a binary file, saved and loaded by one object.
// docs/archive_format.md describes the bytes. Caller serialises.

#include <cstdint>
#include <fstream>
#include <string>

#include "compositions/CompositionDescription.h"

namespace compositions {

class ScriptArchive {
public:
    // Opens the file and writes its header, or for loading reads and checks it. Others may have the
    // file open. Never throws: whether it went well is what Version says.
    ScriptArchive(const std::wstring& path, bool loading);
    ScriptArchive(const ScriptArchive&) = delete;
    ScriptArchive& operator=(const ScriptArchive&) = delete;

    // The file's version; -1 when it could not be opened or is no archive. Anything from
    // kFirstUsableVersion on may be serialized; every version has the same layout.
    std::int32_t Version() const { return version_; }
    bool Loading() const { return loading_; }
    bool IsOpen() const { return stream_.is_open(); }
    // Whether the stream failed. A file without the signature is closed without failing.
    bool Failed() const { return stream_.fail(); }

    // Saves the description, or replaces it by the file's. False when the file ends early, cannot
    // be read or cannot be written, or memory runs out: a description being loaded is incomplete
    // then and must not be used. Bytes behind the description are ignored.
    bool serialize(CompositionDescription& description);
    // Saves alone: false when the archive was opened for loading.
    bool serialize(const CompositionDescription& description);

    // Closes the file; false when something could not be written, or nothing was open.
    bool Close();

    static constexpr std::int32_t kFirstUsableVersion = 1;
    static constexpr std::int32_t kWrittenVersion = 2;

private:
    void Open(const std::wstring& path);
    void WriteHeader();
    void ReadHeader();
    std::string ReadRest();
    void Load(CompositionDescription& description);
    void Save(const CompositionDescription& description);

    std::basic_fstream<char> stream_;
    std::int32_t version_ = -1;
    bool loading_;
};

}  // namespace compositions
