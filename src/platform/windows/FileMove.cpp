#include "platform/FileMove.h"

#include <windows.h>

#include <system_error>

#include "platform/NativePath.h"

namespace platform {
namespace {

bool Flush(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool flushed = FlushFileBuffers(file) != 0;
    CloseHandle(file);
    return flushed;
}

MoveResult Failure() {
    const DWORD error = GetLastError();
    const bool held = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED ||
                      error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE;
    return held ? MoveResult::kRefused : MoveResult::kFailed;
}

}  // namespace

std::filesystem::path StreamPath(const std::wstring& path) {
    return NativePath(path);
}

bool IsPlainFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(NativePath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

bool IsSameFile(const std::wstring& path, const std::wstring& other) {
    std::error_code missing;
    return std::filesystem::equivalent(StreamPath(path), StreamPath(other), missing);
}

MoveResult MoveFileOver(const std::wstring& from, const std::wstring& to) {
    const std::wstring source = NativePath(from);
    const std::wstring target = NativePath(to);
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
        return MoveResult::kFailed;
    }
    if (!Flush(source)) return Failure();
    const DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return MoveFileExW(source.c_str(), target.c_str(), flags) ? MoveResult::kDone : Failure();
}

bool RemoveFile(const std::wstring& path) {
    return DeleteFileW(NativePath(path).c_str()) || GetLastError() == ERROR_FILE_NOT_FOUND;
}

std::vector<std::wstring> ListFolder(const std::wstring& folder, const std::wstring& prefix) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(NativePath(folder + prefix + L"*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        // The system compares without case, and short names too.
        const std::wstring name = entry.cFileName;
        if (name.starts_with(prefix)) names.push_back(name);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return names;
}

bool IsProcessAlive(std::uint32_t id) {
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, id);
    if (process == nullptr) return GetLastError() == ERROR_ACCESS_DENIED;
    const bool alive = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return alive;
}

}  // namespace platform
