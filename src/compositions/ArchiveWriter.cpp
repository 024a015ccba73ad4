#include "compositions/ArchiveWriter.h"

#include "compositions/FileReplacement.h"
#include "compositions/ScriptArchive.h"

namespace compositions {
namespace {

bool WriteWhole(const std::wstring& path, const CompositionDescription& description) {
    ScriptArchive archive(path, false);
    const bool written =
        archive.Version() >= ScriptArchive::kFirstUsableVersion && archive.serialize(description);
    return archive.Close() && written;
}

}  // namespace

bool WriteArchive(const std::wstring& path, const CompositionDescription& description) {
    const auto write = [&](const std::wstring& temporary) {
        return WriteWhole(temporary, description);
    };
    try {
        return ReplaceFile(path, write);
    } catch (...) {
        return false;  // without memory, as without room on the disk
    }
}

}  // namespace compositions
