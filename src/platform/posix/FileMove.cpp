#include "platform/FileMove.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>

#include "platform/CodePage.h"
#include "platform/NativePath.h"

namespace platform {
namespace {

bool Flush(const char* path) {
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const bool flushed = fsync(file) == 0;
    close(file);
    return flushed;
}

}  // namespace

std::filesystem::path StreamPath(const std::wstring& path) {
    return NativePath(path);
}

bool IsPlainFile(const std::wstring& path) {
    struct stat status;
    return stat(NativePath(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool IsSameFile(const std::wstring& path, const std::wstring& other) {
    std::error_code missing;
    return std::filesystem::equivalent(StreamPath(path), StreamPath(other), missing);
}

MoveResult MoveFileOver(const std::wstring& from, const std::wstring& to) {
    const std::string source = NativePath(from);
    const std::string target = NativePath(to);
    // The system would replace it, since it asks for the folder's rights alone.
    if (access(target.c_str(), W_OK) != 0 && errno != ENOENT) return MoveResult::kFailed;
    if (!Flush(source.c_str()) || std::rename(source.c_str(), target.c_str()) != 0) {
        return MoveResult::kFailed;
    }
    return MoveResult::kDone;
}

bool RemoveFile(const std::wstring& path) {
    return unlink(NativePath(path).c_str()) == 0 || errno == ENOENT;
}

std::vector<std::wstring> ListFolder(const std::wstring& folder, const std::wstring& prefix) {
    std::vector<std::wstring> names;
    const std::string native = folder.empty() ? "." : NativePath(folder);
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(native.c_str()), &closedir);
    if (entries == nullptr) return names;
    const std::string nativePrefix = ToNarrow(prefix, CodePage::kAnsi);
    while (const dirent* entry = readdir(entries.get())) {
        // Folders may be large, and hardly a name is wanted.
        if (!std::string_view(entry->d_name).starts_with(nativePrefix)) continue;
        names.push_back(ToWide(entry->d_name, CodePage::kAnsi));
    }
    return names;
}

bool IsProcessAlive(std::uint32_t id) {
    return kill(static_cast<pid_t>(id), 0) == 0 || errno != ESRCH;
}

}  // namespace platform
