#include "helpers/tracer/service/LogFile.h"

#include "helpers/tracer/TraceMessage.h"

namespace helpers {

bool LogFile::Open(const LogNames& names) {
    for (const LogNames::Place& place : names.places) {
        if (!place.folder.empty() && !platform::MakeFolder(place.folder)) {
            TraceMessage().Append(
                "Tracer::DumpThread - exception/warning - failed to created directory");
        }
        if (file_.Open(place.file)) return true;
    }
    return false;
}

bool LogFile::WriteAt(std::uint64_t position, const char* bytes, std::size_t size) {
    return file_.IsOpen() && file_.WriteAt(position, bytes, size);
}

}  // namespace helpers
