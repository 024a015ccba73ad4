#include "platform/OutputFile.h"

#include <windows.h>

#include "platform/NativePath.h"

namespace platform {
namespace {

HANDLE Native(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

}  // namespace

bool OutputFile::Open(const std::wstring& path) {
    Close();
    const HANDLE file =
        CreateFileW(NativePath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    handle_ = reinterpret_cast<std::intptr_t>(file);
    return IsOpen();
}

bool OutputFile::WriteAt(std::uint64_t position, const char* bytes, std::size_t size) {
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(position);
    place.OffsetHigh = static_cast<DWORD>(position >> 32);
    DWORD written = 0;
    if (WriteFile(Native(handle_), bytes, static_cast<DWORD>(size), &written, &place) &&
        written == size) {
        return true;
    }
    LARGE_INTEGER end;
    end.QuadPart = static_cast<LONGLONG>(position);
    if (SetFilePointerEx(Native(handle_), end, nullptr, FILE_BEGIN)) SetEndOfFile(Native(handle_));
    return false;
}

void OutputFile::Close() {
    if (IsOpen()) CloseHandle(Native(handle_));
    handle_ = kNone;
}

bool MakeFolder(const std::wstring& path) {
    const NativeString native = NativePath(path);
    if (CreateDirectoryW(native.c_str(), nullptr)) return true;
    const DWORD attributes = GetFileAttributesW(native.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool AppendToFile(const std::wstring& path, const char* bytes, std::size_t size) {
    const HANDLE file =
        CreateFileW(NativePath(path).c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const bool all =
        WriteFile(file, bytes, static_cast<DWORD>(size), &written, nullptr) && written == size;
    CloseHandle(file);
    return all;
}

std::size_t ToTextMode(const char* text, std::size_t size, char* out) {
    char* end = out;
    for (std::size_t i = 0; i < size; ++i) {
        if (text[i] == '\n') *end++ = '\r';
        *end++ = text[i];
    }
    return static_cast<std::size_t>(end - out);
}

}  // namespace platform
