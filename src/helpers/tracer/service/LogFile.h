#pragma once

#include "helpers/tracer/service/LogNames.h"
#include "helpers/tracer/service/LogSink.h"
#include "platform/OutputFile.h"

namespace helpers {

// The log file: in the first place where it can be opened, or nowhere. Caller serialises.
class LogFile : public LogSink {
public:
    // Tries one place after another. A folder that cannot be created is reported through the
    // tracer.
    bool Open(const LogNames& names);
    bool IsOpen() const { return file_.IsOpen(); }
    bool WriteAt(std::uint64_t position, const char* bytes, std::size_t size) override;
    void Close() { file_.Close(); }

private:
    platform::OutputFile file_;
};

}  // namespace helpers
